#include <desktop/items/Drawings.h>

#include <QTransform>

namespace orrivane::desktop::drawings {

namespace {

// Flat below, two domes above; 17 points wide, 11 high at size 1.
QPainterPath cloudAt(QPointF corner, double size = 1) {
    QPainterPath cloud;
    cloud.setFillRule(Qt::WindingFill);
    cloud.addRoundedRect(QRectF(0, 5, 17, 6), 3, 3);
    cloud.addEllipse(QPointF(7.3, 5), 4.6, 4.6);
    cloud.addEllipse(QPointF(12.2, 6.2), 3.4, 3.4);
    return (QTransform::fromScale(size, size) * QTransform::fromTranslate(corner.x(), corner.y()))
        .map(cloud.simplified());
}

void badge(IconPen& pen, QPointF centre) {
    pen.erase(disc(centre, 4.4));
    pen.setColor(QColor(0xe5484d));
    pen.fill(disc(centre, 3));
    pen.setColor({});
}

} // namespace

void weather(IconPen& pen, const ItemState& state) {
    const QPointF sun(8.4, 8.6);
    pen.setColor(QColor(0xf2a81e));
    pen.fill(disc(sun, 3.3));
    for (int ray = 0; ray < 8; ++ray) {
        const QPainterPath inner = arc(sun, 5.1, ray * 45, 0.1);
        const QPainterPath outer = arc(sun, 6.2, ray * 45, 0.1);
        pen.line(polyline({inner.elementAt(0), outer.elementAt(0)}), 1.2);
    }
    pen.setColor({});
    const QPainterPath cloud = cloudAt({5.2, 7.6});
    pen.eraseLine(cloud, 2.6);
    pen.fill(cloud);
    const QString degrees =
        state.isOn("Fahrenheit") ? QStringLiteral("64°") : QStringLiteral("18°");
    pen.text({25, 0, 22, IconPen::height}, degrees, 13, QFont::Normal,
             Qt::AlignLeft | Qt::AlignVCenter);
}

void cloud(IconPen& pen, const ItemState& state) {
    pen.fill(cloudAt({3, 4.4}, 1.18));
    if (state.isOn("Pause Syncing")) {
        pen.eraseLine(polyline({{11.2, 10.4}, {11.2, 14.2}}), 1.5);
        pen.eraseLine(polyline({{14.6, 10.4}, {14.6, 14.2}}), 1.5);
    } else {
        pen.eraseLine(polyline({{9.4, 12}, {11.9, 14.3}, {16.2, 9.2}}), 1.6);
    }
}

void mail(IconPen& pen, const ItemState& state) {
    pen.frame({3, 5, 20, 13}, 3, 1.4);
    QPainterPath flap(QPointF(5.4, 7.8));
    flap.lineTo(11.4, 12);
    flap.quadTo(13, 13, 14.6, 12);
    flap.lineTo(20.6, 7.8);
    pen.line(flap, 1.4);
    if (!state.isOn("Mark All as Read"))
        badge(pen, {21.6, 6});
}

void music(IconPen& pen, const ItemState& state) {
    pen.setStrength(state.isOn("Playing") ? 1 : 0.45);
    QPainterPath note;
    note.setFillRule(Qt::WindingFill);
    note.addEllipse(QPointF(5.4, 15.9), 2.7, 2.2);
    note.addEllipse(QPointF(13.6, 14.3), 2.7, 2.2);
    note.addRect(QRectF(6.6, 6, 1.5, 10));
    note.addRect(QRectF(14.8, 4.4, 1.5, 10));
    note.addPath(polygon({{6.6, 5.2}, {16.3, 3.3}, {16.3, 6.4}, {6.6, 8.3}}));
    pen.fill(note.simplified());
}

void chat(IconPen& pen, const ItemState& state) {
    QPainterPath bubble = roundedBox({3, 4, 19, 12}, 6);
    QPainterPath tail(QPointF(6.2, 13));
    tail.cubicTo(6.4, 16, 5.6, 17.6, 4.2, 18.6);
    tail.cubicTo(7.6, 18.6, 9.8, 17.6, 11.4, 15.4);
    tail.closeSubpath();
    pen.fill(bubble.united(tail));
    for (const double x : {8.3, 12.5, 16.7})
        pen.erase(disc({x, 10}, 1.25));
    if (!state.isOn("Mark All as Read") && !state.isOn("Do Not Disturb"))
        badge(pen, {21.2, 5.6});
}

} // namespace orrivane::desktop::drawings
