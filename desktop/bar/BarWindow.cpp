#include <desktop/bar/BarWindow.h>

#include <desktop/bar/Wallpaper.h>

#include <algorithm>

#include <QPaintEvent>
#include <QPainter>
#include <QTimer>

namespace orrivane::desktop {

namespace {

constexpr auto cutoutProperty = "_ORRIVANE_DISPLAY_CUTOUT";
constexpr double plainHeight = 24; // points, without a notch
constexpr double menuMargin = 8;   // points, left of the first menu
constexpr double notchMargin = 4;  // points, between the last menu and the notch

} // namespace

BarWindow::BarWindow(const Theme& theme, std::unique_ptr<TrayWire> wire,
                     const TrayHost::Settings& trayed)
    : theme_(theme)
    , front_(root_)
    , ownMenus_(theme)
    , notch_(theme)
    , titles_(theme, this)
    , clock_(theme, this) {
    setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus);
    setAttribute(Qt::WA_X11NetWmWindowTypeDock);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setWindowTitle(tr("Menu bar"));
    tray_ = std::make_unique<TrayHost>(std::move(wire), static_cast<xcb_window_t>(winId()), trayed,
                                       OrderFile::ofSession());
    connect(tray_.get(), &TrayHost::lost, this, &BarWindow::failed);
    // Until then the screen may be another bar's.
    connect(tray_.get(), &TrayHost::taken, this, &BarWindow::begin);
}

void BarWindow::begin() {
    connect(tray_.get(), &TrayHost::stackingChanged, &notch_, &Notch::stayAbove);
    connect(&root_, &RootWatch::screenChanged, this, &BarWindow::follow);
    connect(&root_, &RootWatch::propertyChanged, this, [this](xcb_atom_t property) {
        if (property == xserver::atom(cutoutProperty))
            follow();
    });
    connect(&front_, &FrontApplication::changed, this, &BarWindow::showMenus);
    connect(&titles_, &MenuTitles::chosen, this, &BarWindow::choose);
    showMenus();
    follow();
    takeDockType();
    show();
}

void BarWindow::follow() {
    const auto cutouts = xserver::cardinals(xserver::root(), cutoutProperty);
    const auto place =
        BarPlace::of(RootWatch::monitors(), cutouts.value_or(std::vector<std::uint32_t>()),
                     theme_.pixels(plainHeight));
    if (place == place_)
        return;
    place_ = place;
    setFixedSize(place.bar.size());
    move(place.bar.topLeft());
    notch_.setPlace(place.notch);
    reserveRoom();
    arrange();
    // It takes a while to paint, and the bar shall not wait for it.
    QTimer::singleShot(0, this, [this] {
        Wallpaper(theme_.dark, Wallpaper::shownNumber()).install(place_.screen.size());
    });
}

void BarWindow::arrange() {
    const int clockWidth = std::min(clock_.neededWidth(), width());
    clock_.setGeometry(width() - clockWidth, 0, clockWidth, height());
    tray_->setPlace(QRect(0, 0, width() - clockWidth, height()), place_.bar.topLeft());
    const int limit = place_.notch.isEmpty()
                          ? width() - clockWidth
                          : place_.notch.left() - place_.bar.left() - theme_.pixels(notchMargin);
    titles_.setPlace(theme_.pixels(menuMargin), limit, height());
}

// The toolkit puts a type of its own before it for a window without a frame, and who reads only the
// first one would not see a dock.
void BarWindow::takeDockType() {
    const auto dockType = xserver::atom("_NET_WM_WINDOW_TYPE_DOCK");
    xcb_change_property(xserver::connection(), XCB_PROP_MODE_REPLACE,
                        static_cast<xcb_window_t>(winId()), xserver::atom("_NET_WM_WINDOW_TYPE"),
                        XCB_ATOM_ATOM, 32, 1, &dockType);
}

void BarWindow::reserveRoom() {
    const auto left = static_cast<std::uint32_t>(place_.bar.left());
    const auto right = static_cast<std::uint32_t>(place_.bar.right());
    const auto top = static_cast<std::uint32_t>(place_.bar.bottom() + 1);
    const std::uint32_t partial[] = {0, 0, top, 0, 0, 0, 0, 0, left, right, 0, 0};
    const auto window = static_cast<xcb_window_t>(winId());
    const auto set = [&](const char* name, std::uint32_t count) {
        xcb_change_property(xserver::connection(), XCB_PROP_MODE_REPLACE, window,
                            xserver::atom(name), XCB_ATOM_CARDINAL, 32, count, partial);
    };
    set("_NET_WM_STRUT", 4);
    set("_NET_WM_STRUT_PARTIAL", 12);
}

void BarWindow::showMenus() {
    const auto& front = front_.state();
    if (front.window == XCB_NONE)
        titles_.showMenus(DesktopMenus::name, ownMenus_.nameEntries(), ownMenus_.menus());
    else
        titles_.showMenus(front.name, {"Quit " + front.name}, front.menus);
    if (!place_.bar.isEmpty())
        arrange();
}

void BarWindow::choose(int menu, int entry) {
    if (front_.state().window == XCB_NONE)
        ownMenus_.choose(menu, entry, place_);
    else
        front_.choose(menu, entry);
}

void BarWindow::paintEvent(QPaintEvent* event) {
    QPainter(this).fillRect(event->rect(), theme_.barBackground);
}

} // namespace orrivane::desktop
