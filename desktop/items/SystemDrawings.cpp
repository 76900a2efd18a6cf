#include <desktop/items/Drawings.h>

namespace orrivane::desktop::drawings {

namespace {

constexpr double off = 0.38;

// Struck out: a gap beside the stroke keeps it apart from what it crosses.
void strike(IconPen& pen, QPointF from, QPointF to) {
    const QPointF aside(1.3, -1.3);
    pen.eraseLine(polyline({from + aside, to + aside}), 1.6);
    pen.line(polyline({from, to}), 1.5);
}

} // namespace

void wifi(IconPen& pen, const ItemState& state) {
    const QPointF foot(pen.width() / 2, 17);
    const bool on = state.isOn("Wi-Fi");
    pen.setStrength(on ? 1 : off);
    pen.fill(disc({foot.x(), foot.y() - 1.1}, 1.9));
    for (const double radius : {5.0, 8.8, 12.6})
        pen.line(arc(foot, radius, 48, 84), 2.1);
    if (!on) {
        pen.setStrength(1);
        strike(pen, {foot.x() - 7, 4}, {foot.x() + 7, 18});
    }
}

void bluetooth(IconPen& pen, const ItemState& state) {
    const double middle = pen.width() / 2;
    pen.setStrength(state.isOn("Bluetooth") ? 1 : off);
    pen.line(polyline({{middle - 4, 7.2},
                       {middle + 3.8, 14.6},
                       {middle, 18.2},
                       {middle, 3.8},
                       {middle + 3.8, 7.4},
                       {middle - 4, 14.8}}),
             1.5);
}

void volume(IconPen& pen, const ItemState& state) {
    const QPointF mouth(11, 11);
    const QPainterPath speaker =
        polygon({{3.6, 9}, {6.4, 9}, {10.4, 5.4}, {10.4, 16.6}, {6.4, 13}, {3.6, 13}});
    pen.fill(speaker);
    pen.line(speaker, 1.4);
    if (state.isOn("Mute")) {
        pen.line(polyline({{15, 8}, {21, 14}}), 1.6);
        pen.line(polyline({{21, 8}, {15, 14}}), 1.6);
        return;
    }
    const int waves = state.isOn("Loud") ? 3 : state.isOn("Medium") ? 2 : 1;
    for (int wave = 0; wave < 3; ++wave) {
        pen.setStrength(wave < waves ? 1 : 0.25);
        pen.line(arc(mouth, 3.4 + 3.7 * wave, -42, 84), 1.6);
    }
}

void keyboard(IconPen& pen, const ItemState& state) {
    const QRectF plate(3, 4, 24, 14);
    QString layout = QStringLiteral("EN");
    if (state.isOn("Deutsch"))
        layout = QStringLiteral("DE");
    else if (state.isOn("Français"))
        layout = QStringLiteral("FR");
    else if (state.isOn("Español"))
        layout = QStringLiteral("ES");
    pen.box(plate, 3.6);
    pen.eraseText(plate, layout, 10.5, QFont::Bold);
}

void vpn(IconPen& pen, const ItemState& state) {
    const double middle = pen.width() / 2;
    QPainterPath shield(QPointF(middle, 3.2));
    shield.cubicTo(middle + 2, 4.8, middle + 4.4, 5.5, middle + 6.6, 5.7);
    shield.cubicTo(middle + 7.1, 11.6, middle + 5, 16.4, middle, 18.8);
    shield.cubicTo(middle - 5, 16.4, middle - 7.1, 11.6, middle - 6.6, 5.7);
    shield.cubicTo(middle - 4.4, 5.5, middle - 2, 4.8, middle, 3.2);
    pen.line(shield, 1.4);
    if (state.isOn("Connect")) {
        pen.fill(shield);
        pen.eraseLine(polyline({{middle - 3, 11}, {middle - 0.7, 13.4}, {middle + 3.4, 8.6}}), 1.6);
        return;
    }
    pen.line(polyline({{middle - 2.4, 8.8}, {middle + 2.4, 13.6}}), 1.4);
    pen.line(polyline({{middle + 2.4, 8.8}, {middle - 2.4, 13.6}}), 1.4);
}

void nameless(IconPen& pen, const ItemState&) {
    const QPointF centre(pen.width() / 2, 11);
    constexpr int dashes = 8;
    for (int dash = 0; dash < dashes; ++dash)
        pen.line(arc(centre, 6.6, 360.0 / dashes * dash + 11, 22), 1.6);
    pen.fill(disc(centre, 2));
}

void firstTwin(IconPen& pen, const ItemState&) {
    pen.frame({3.5, 4.5, 13, 13}, 3.2, 1.4);
    pen.fill(disc({10, 11}, 1.8));
}

void secondTwin(IconPen& pen, const ItemState&) {
    pen.frame({3.5, 4.5, 13, 13}, 3.2, 1.4);
    pen.fill(disc({7.6, 13.4}, 1.6));
    pen.fill(disc({12.4, 8.6}, 1.6));
}

void sleepy(IconPen& pen, const ItemState&) {
    pen.fill(disc({9.6, 11.6}, 6.4).subtracted(disc({12.8, 8.9}, 5.6)));
    pen.line(polyline({{14.2, 5}, {17.4, 5}, {14.2, 9}, {17.4, 9}}), 1.3);
    pen.line(polyline({{19.2, 10.6}, {22, 10.6}, {19.2, 14}, {22, 14}}), 1.2);
}

} // namespace orrivane::desktop::drawings
