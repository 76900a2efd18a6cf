#include <desktop/bar/Notch.h>

#include <desktop/support/XServer.h>

#include <algorithm>
#include <cmath>

#include <QPainter>
#include <QPainterPath>

namespace orrivane::desktop {

namespace {

constexpr double cornerRadius = 10; // points
// Against somebody who wants to be on top as well it loses a few frames, but no processor.
constexpr int riseDelay = 5; // milliseconds

} // namespace

Notch::Notch(const Theme& theme)
    : theme_(theme) {
    setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::X11BypassWindowManagerHint |
                   Qt::WindowDoesNotAcceptFocus | Qt::WindowTransparentForInput);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::NoFocus);
    setWindowTitle(QStringLiteral("Notch"));
    rise_.setSingleShot(true);
    rise_.setInterval(riseDelay);
    connect(&rise_, &QTimer::timeout, this, [this] {
        raise();
        // From a timer the toolkit may keep the request until something else happens.
        xcb_flush(xserver::connection());
    });
}

void Notch::setPlace(const QRect& place) {
    if (place.isEmpty())
        return hide();
    setGeometry(place);
    setMask(outline());
    show();
    raise();
}

void Notch::stayAbove() {
    if (isVisible() && !rise_.isActive())
        rise_.start();
}

double Notch::radius() const {
    return std::min({cornerRadius * theme_.scale, width() / 2.0, height() / 2.0});
}

// Every pixel that the rounded shape touches; how much of it is painted says paintEvent.
QRegion Notch::outline() const {
    const double round = radius();
    const int corners = static_cast<int>(std::ceil(round));
    QRegion region(0, 0, width(), height() - corners);
    for (int y = height() - corners; y < height(); ++y) {
        const double below = std::max(0.0, y - (height() - round));
        const double half = std::sqrt(std::max(0.0, round * round - below * below));
        const int inset = static_cast<int>(std::floor(round - half));
        region += QRect(inset, y, width() - 2 * inset, 1);
    }
    return region;
}

void Notch::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    // What lies behind the edge of the shape is the bar, so that the edge can be smooth.
    painter.fillRect(rect(), theme_.barBackground);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::black);
    const double round = radius();
    QPainterPath shape;
    shape.addRoundedRect(QRectF(0, -2 * round, width(), height() + 2 * round), round, round);
    painter.drawPath(shape);
}

} // namespace orrivane::desktop
