#include <desktop/support/MenuBackdrop.h>

#include <desktop/support/XServer.h>

#include <algorithm>

#include <QEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QScreen>

#include <xcb/shape.h>

namespace orrivane::desktop {

namespace {

constexpr double cornerRadius = 9;

} // namespace

MenuBackdrop::MenuBackdrop(QMenu& menu, const Theme& theme)
    : QObject(&menu)
    , menu_(menu)
    , theme_(theme) {
    menu.setContentsMargins(shadowRoom(theme));
    menu.installEventFilter(this);
}

MenuBackdrop* MenuBackdrop::of(const QWidget* menu) {
    return menu == nullptr ? nullptr
                           : menu->findChild<MenuBackdrop*>(QString(), Qt::FindDirectChildrenOnly);
}

QMargins MenuBackdrop::shadowRoom(const Theme& theme) {
    const int side = theme.pixels(14);
    return {side, 0, side, theme.pixels(20)};
}

bool MenuBackdrop::eventFilter(QObject* watched, QEvent* event) {
    if (watched != &menu_)
        return false;
    // The window is placed but not yet mapped.
    if (event->type() == QEvent::Show && !event->spontaneous()) {
        menu_.move(menu_.pos() - QPoint(shadowRoom(theme_).left(), 0));
        prepare();
        limitInput();
    } else if (event->type() == QEvent::MouseButtonPress &&
               !panel().contains(static_cast<QMouseEvent*>(event)->position().toPoint())) {
        menu_.close();
        return true;
    }
    return false;
}

QRect MenuBackdrop::panel() const {
    return menu_.rect().marginsRemoved(shadowRoom(theme_));
}

void MenuBackdrop::limitInput() const {
    const QRect inside = panel();
    const xcb_rectangle_t area{
        static_cast<std::int16_t>(inside.x()), static_cast<std::int16_t>(inside.y()),
        static_cast<std::uint16_t>(inside.width()), static_cast<std::uint16_t>(inside.height())};
    xcb_shape_rectangles(xserver::connection(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT,
                         XCB_CLIP_ORDERING_UNSORTED, static_cast<xcb_window_t>(menu_.winId()), 0, 0,
                         1, &area);
}

QImage MenuBackdrop::screenBehind() const {
    const QScreen* screen = menu_.screen();
    const QRect area = menu_.geometry();
    const QRect seen = area.intersected(screen->virtualGeometry());
    QImage image(area.size(), QImage::Format_RGB32);
    image.fill(theme_.windowBackground);
    if (seen.isEmpty())
        return image;
    const QPoint origin = seen.topLeft() - screen->geometry().topLeft();
    QPainter(&image).drawPixmap(seen.topLeft() - area.topLeft(),
                                const_cast<QScreen*>(screen)->grabWindow(
                                    0, origin.x(), origin.y(), seen.width(), seen.height()));
    return image;
}

void MenuBackdrop::prepare() {
    surface_ = screenBehind();
    QPainter painter(&surface_);
    painter.setRenderHint(QPainter::Antialiasing);
    paintShadow(painter);
    const double line = std::max(1, theme_.pixels(0.5));
    const double radius = cornerRadius * theme_.scale;
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme_.menuBackground);
    painter.drawRoundedRect(panel(), radius, radius);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(theme_.menuBorder, line));
    const double inset = line / 2;
    painter.drawRoundedRect(QRectF(panel()).adjusted(inset, inset, -inset, -inset), radius - inset,
                            radius - inset);
}

void MenuBackdrop::paintShadow(QPainter& painter) const {
    const int reach = theme_.pixels(14);
    const int drop = theme_.pixels(5);
    const double deepest = theme_.dark ? 0.5 : 0.28;
    painter.setPen(Qt::NoPen);
    // Rings laid over each other: the darkness grows towards the panel.
    double sum = 0;
    for (int ring = reach; ring > 0; --ring) {
        const double near = 1 - static_cast<double>(ring) / (reach + 1);
        const double wanted = deepest * near * near;
        const double added = (wanted - sum) / (1 - sum);
        sum = wanted;
        painter.setBrush(QColor::fromRgbF(0, 0, 0, static_cast<float>(added)));
        const double radius = cornerRadius * theme_.scale + ring;
        painter.drawRoundedRect(panel().adjusted(-ring, drop - ring, ring, drop + ring), radius,
                                radius);
    }
}

void MenuBackdrop::paint(QPainter& painter) const {
    painter.drawImage(0, 0, surface_);
}

} // namespace orrivane::desktop
