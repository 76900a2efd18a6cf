#include <Orrivane/AppState.h>

#include <Orrivane/LoginItem.h>
#include <Orrivane/support/Awaiters.h>

#include <cmath>
#include <cstdlib>
#include <utility>

namespace orrivane {

std::shared_ptr<AppState> AppState::create(const Platform& platform, const ShellPlatform& shell,
                                           CaptureService& captures) {
    return std::shared_ptr<AppState>(new AppState(platform, shell, captures));
}

AppState::AppState(const Platform& platform, const ShellPlatform& shell, CaptureService& captures)
    : platform_(platform)
    , shell_(shell)
    , captures_(captures)
    , census_(*this, std::nullopt)
    , images_(*this, {})
    , isRefreshing_(*this, false)
    , squeeze_(*this, SqueezeEngine::read(shell.globalPreferences))
    , sliderValue_(
          *this, static_cast<double>(squeeze_.get().spacing.value_or(SqueezeEngine::systemSpacing)))
    , screenGranted_(*this, captures.screenCaptureGranted())
    , launchAtLogin_(*this, LoginItem::isEnabled(shell.loginService)) {}

std::int64_t AppState::sliderSpacing() const {
    constexpr double limit = 0x1p63; // the first double beyond the range
    const double value = std::trunc(sliderValue());
    // Written so that what is no number ends here too.
    if (!(value >= -limit && value < limit))
        std::abort();
    return static_cast<std::int64_t>(value);
}

void AppState::toggleLogin() {
    LoginItem::setEnabled(launchAtLogin(), shell_.loginService, platform_.log);
}

std::vector<PreviewIcon> AppState::previewIcons() const {
    std::vector<PreviewIcon> icons;
    if (!census())
        return icons;
    icons.reserve(census()->items.size());
    for (const auto& item : census()->items) {
        PreviewIcon icon{item.id, item.frame.width(), std::nullopt};
        if (const auto image = images().find(item.id); image != images().end())
            icon.image = image->second;
        icons.push_back(std::move(icon));
    }
    return icons;
}

Task<> AppState::refresh() {
    return runRefresh(shared_from_this());
}

Task<> AppState::applySqueeze(bool restart) {
    return runApply(shared_from_this(), restart);
}

Task<> AppState::resetSqueeze(bool restart) {
    return runReset(shared_from_this(), restart);
}

Task<> AppState::runRefresh(Self self) {
    self->isRefreshing_ = true;
    self->screenGranted_ = self->captures_.screenCaptureGranted();
    self->census_ = WindowCensus::take(self->platform_.screens, self->platform_.windowList);
    auto captured = captureSignature(*self->census());
    const bool changed = captured != self->lastCaptureSignature_ || self->images().empty();
    if (self->screenGranted() && changed) {
        std::vector<std::uint32_t> ids;
        for (const auto& item : self->census()->items)
            ids.push_back(item.id);
        auto images = co_await self->captures_.captureIcons(std::move(ids));
        self->images_ = std::move(images);
        self->lastCaptureSignature_ = std::move(captured);
    }
    self->squeeze_ = SqueezeEngine::read(self->shell_.globalPreferences);
    self->isRefreshing_ = false;
}

Task<> AppState::runApply(Self self, bool restart) {
    SqueezeEngine::apply(self->sliderSpacing(), self->shell_.globalPreferences);
    if (restart)
        co_await restartMenuBar(self);
    co_await runRefresh(self);
}

Task<> AppState::runReset(Self self, bool restart) {
    SqueezeEngine::reset(self->shell_.globalPreferences);
    if (restart)
        co_await restartMenuBar(self);
    co_await runRefresh(self);
}

Task<> AppState::restartMenuBar(Self self) {
    SqueezeEngine::restartControlCenter(self->shell_.processLauncher);
    // A pause cut short is no reason to leave out what follows.
    Sleep pause(restartPause);
    co_await pause;
}

AppState::Signature AppState::captureSignature(const CensusResult& census) {
    Signature frames;
    for (const auto& item : census.items)
        if (!frames.emplace(item.id, item.frame).second)
            std::abort();
    return frames;
}

} // namespace orrivane
