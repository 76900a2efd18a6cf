#include <desktop/bar/DesktopMenus.h>

#include <desktop/bar/Ewmh.h>
#include <desktop/bar/FrontApplication.h>
#include <desktop/bar/Wallpaper.h>
#include <desktop/support/ChoiceLog.h>

#include <QCoreApplication>
#include <QMenu>

namespace orrivane::desktop {

namespace {

constexpr auto restart = "Restart Menu Bar";
constexpr auto closeAll = "Close All Windows";
constexpr auto showDesktop = "Show Desktop";
constexpr auto nextWallpaper = "Next Wallpaper";
constexpr auto about = "About This Desktop";

} // namespace

DesktopMenus::DesktopMenus(const Theme& theme)
    : theme_(theme) {}

DesktopMenus::~DesktopMenus() = default;

std::vector<std::string> DesktopMenus::nameEntries() const {
    return {restart};
}

std::vector<AppMenu> DesktopMenus::menus() const {
    return {{"File", {closeAll}}, {"View", {showDesktop, "-", nextWallpaper}}, {"Help", {about}}};
}

void DesktopMenus::choose(int menu, int entry, const BarPlace& place) {
    const auto all = menus();
    const bool isName = menu == FrontApplication::nameMenu;
    const AppMenu chosen =
        isName ? AppMenu{name, nameEntries()} : all.at(static_cast<std::size_t>(menu));
    const auto& what = chosen.entries.at(static_cast<std::size_t>(entry));
    logChoice("desktop", chosen.title + '/' + what);
    if (what == restart)
        QCoreApplication::quit();
    else if (what == closeAll)
        for (const auto window : ewmh::managedWindows())
            ewmh::close(window);
    else if (what == showDesktop)
        ewmh::showDesktop(!ewmh::isShowingDesktop());
    else if (what == nextWallpaper)
        showNextWallpaper(place.screen.size());
    else if (what == about)
        showAbout(place);
}

void DesktopMenus::showNextWallpaper(QSize size) const {
    Wallpaper(theme_.dark, (Wallpaper::shownNumber() + 1) % Wallpaper::count).install(size);
}

void DesktopMenus::showAbout(const BarPlace& place) {
    const auto points = [&](const QSize& pixels) {
        return QStringLiteral("%1 × %2 points")
            .arg(pixels.width() / theme_.scale)
            .arg(pixels.height() / theme_.scale);
    };
    about_ = std::make_unique<QMenu>();
    const auto add = [&](const QString& label, const QString& text) {
        about_->addAction(label + '\t' + text)->setEnabled(false);
    };
    about_->addSection(QString::fromLatin1(about));
    add(QStringLiteral("Display"), points(place.screen.size()));
    add(QStringLiteral("Menu bar"), points(place.bar.size()));
    add(QStringLiteral("Notch"),
        place.notch.isEmpty() ? QStringLiteral("none") : points(place.notch.size()));
    add(QStringLiteral("Pixels a point"), QString::number(theme_.scale));
    about_->popup(place.bar.bottomLeft() + QPoint(theme_.pixels(16), 1 + theme_.pixels(8)));
}

} // namespace orrivane::desktop
