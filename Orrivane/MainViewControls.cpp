#include <Orrivane/MainView.h>

#include <Orrivane/MainViewParts.h>
#include <Orrivane/UpdateController.h>
#include <Orrivane/platform/Workspace.h>

#include <algorithm>
#include <utility>

namespace orrivane {

using namespace parts;

namespace {

std::string appliedText(const SqueezeState& stored) {
    return "Applied: " + (stored.spacing ? std::to_string(*stored.spacing) : "system default");
}

std::string versionText(const VersionStrings& own) {
    return "Version " + own.version + " (build " + own.build + ")";
}

} // namespace

View MainView::squeezeSection() {
    auto note = caption(squeezeLimitation_);
    note.isVisible = !squeezeLimitation_.empty();
    auto controls = squeezeControls();
    controls.isVisible = storedDefault(squeezeShownKey);
    return section(
        "Squeeze",
        {toggle("Tighten macOS icon spacing", storedDefault(squeezeShownKey),
                action([](MainView& self, bool on) { self.setDefault(squeezeShownKey, on); })),
         caption("A separate macOS tweak, independent of Orrivane's notch tray: tightens the "
                 "system's own icon spacing. Modest effect — about two icons at maximum."),
         std::move(note), std::move(controls)});
}

View MainView::squeezeControls() {
    Slider slider{.label = "Spacing",
                  .minimumLabel = "Tight",
                  .maximumLabel = "Default",
                  .value = std::clamp(state_->sliderValue(), minimumSpacing, maximumSpacing),
                  .minimum = minimumSpacing,
                  .maximum = maximumSpacing,
                  .step = 1,
                  .changed = {action([](MainView& self, double to) { self.moveSlider(to); })}};
    return column({{.node = std::move(slider), .frame = {.fillsWidth = true}},
                   caption(appliedText(state_->squeeze())),
                   caption("Without a restart, changes take effect at next login."),
                   row({button("Apply", action([](MainView& self) { self.applySpacing(); })),
                        button("Apply & Restart Menu Bar", action([](MainView& self) {
                                   self.showApplyConfirm_ = true;
                                   self.redraw_.request();
                               })),
                        button("Reset to Default", action([](MainView& self) {
                                   self.showResetConfirm_ = true;
                                   self.redraw_.request();
                               }))})});
}

View MainView::updatesRow() {
    const auto& updates = services_.updates;
    const bool isAvailable = updates.availableVersion().has_value();
    const auto version = updates.availableVersion().value_or("");
    const auto check = [](MainView& self) { self.services_.updates.checkForUpdates(); };

    auto update = button("Update to " + version + "…", action(check));
    std::get<Button>(update.node).symbol = "arrow.down.circle.fill";
    update.isVisible = isAvailable;
    auto checkNow = button("Check for Updates…", action(check));
    checkNow.isVisible = !isAvailable;
    checkNow.isEnabled = updates.canCheckForUpdates();
    auto available = caption("Version " + version + " is available");
    available.isVisible = isAvailable;
    return column(
        {row({std::move(update), std::move(checkNow),
              toggle("Check automatically", updates.automaticallyChecksForUpdates(),
                     action([](MainView& self, bool on) {
                         self.services_.updates.setAutomaticallyChecksForUpdates(on);
                     }))}),
         row({std::move(available), caption(versionText(platform_.workspace.versionStrings()))})});
}

View MainView::footer() {
    auto icon = toggle("Menu bar icon", storedDefault(showStatusItemKey),
                       action([](MainView& self, bool on) { self.setShowStatusItem(on); }));
    icon.tooltip = "Hide Orrivane's own icon from the menu bar. Reopen the app to get the window "
                   "back.";
    auto refresh =
        button("Refresh", action([](MainView& self) { self.begin(self.state_->refresh()); }));
    refresh.isEnabled = !state_->isRefreshing();
    return row(
        {toggle("Launch at login", state_->launchAtLogin(),
                action([](MainView& self, bool on) { self.setLaunchAtLogin(on); })),
         std::move(icon),
         {.node = Spacer{}},
         std::move(refresh),
         button("Quit", action([](MainView& self) { self.platform_.workspace.terminate(); }))});
}

View MainView::applyDialog() {
    const auto cancel = action([](MainView& self) { self.answerApply(false); });
    return {.node = ConfirmationDialog{
                "Restart the menu bar?",
                "Your menu bar icons will briefly flicker while Control Center restarts.",
                showApplyConfirm_,
                {{"Apply & Restart", DialogButtonRole::standard, {action([](MainView& self) {
                      self.answerApply(true);
                  })}},
                 {"Cancel", DialogButtonRole::cancel, {cancel}}},
                {cancel}}};
}

View MainView::resetDialog() {
    const auto answer = [this](ResetAnswer given) {
        return ViewAction{action([given](MainView& self) { self.answerReset(given); })};
    };
    return {.node = ConfirmationDialog{
                "Reset spacing to system default?",
                "Restarting applies the change immediately; your menu bar icons will briefly "
                "flicker while Control Center restarts. Without a restart, the default returns at "
                "next login.",
                showResetConfirm_,
                {{"Reset & Restart Menu Bar", DialogButtonRole::standard,
                  answer(ResetAnswer::resetAndRestart)},
                 {"Reset Without Restart", DialogButtonRole::standard, answer(ResetAnswer::reset)},
                 {"Cancel", DialogButtonRole::cancel, answer(ResetAnswer::cancel)}},
                answer(ResetAnswer::cancel)}};
}

} // namespace orrivane
