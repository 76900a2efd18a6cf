#include <desktop/items/Drawings.h>

#include <algorithm>
#include <cmath>
#include <iterator>

#include <QDateTime>

namespace orrivane::desktop::drawings {

namespace {

constexpr double digits = 13;

// A made-up load that looks like one; 0 to 1.
double loadAt(std::int64_t step) {
    const double t = static_cast<double>(step);
    const double load = 0.42 + 0.24 * std::sin(t * 0.61) + 0.2 * std::sin(t * 1.73 + 1) +
                        0.12 * std::sin(t * 3.1 + 2);
    return std::clamp(load, 0.08, 1.0);
}

struct City {
    const char* entry;
    const char* shown;
    int hoursEast;
};

// None of them changes its clocks in summer.
constexpr City cities[] = {
    {"Tokyo", "TYO", 9}, {"Dubai", "DXB", 4}, {"Lagos", "LOS", 1}, {"Bogotá", "BOG", -5}};

int minutesOf(const ItemState& state) {
    return state.isOn("5 Minutes") ? 5 : state.isOn("45 Minutes") ? 45 : 25;
}

} // namespace

void battery(IconPen& pen, const ItemState& state) {
    constexpr double charge = 0.82;
    pen.text({0, 0, 26, IconPen::height}, QStringLiteral("82%"), 12, QFont::Normal,
             Qt::AlignRight | Qt::AlignVCenter);
    pen.setStrength(0.5);
    pen.frame({29, 5, 21, 12}, 3, 1);
    pen.fill(roundedBox(pen.snapped(QRectF(50.8, 9, 1.6, 4)), 0.8));
    pen.setStrength(1);
    if (state.isOn("Low Power Mode"))
        pen.setColor(QColor(0xf2b01e));
    pen.box({31, 7, 17 * charge, 8}, 1.4);
}

void worldClock(IconPen& pen, const ItemState& state) {
    const auto* city = std::find_if(std::begin(cities), std::end(cities),
                                    [&](const City& each) { return state.isOn(each.entry); });
    if (city == std::end(cities))
        city = std::begin(cities);
    const QDateTime there = QDateTime::currentDateTimeUtc().addSecs(city->hoursEast * 3600);
    pen.setStrength(0.62);
    pen.text({0, 0, 22, IconPen::height}, QString::fromUtf8(city->shown), 9.5, QFont::Bold,
             Qt::AlignRight | Qt::AlignVCenter);
    pen.setStrength(1);
    pen.text({25.5, 0, 34, IconPen::height}, there.toString(QStringLiteral("HH:mm")), digits,
             QFont::Normal, Qt::AlignLeft | Qt::AlignVCenter);
}

void timer(IconPen& pen, const ItemState& state) {
    const int whole = minutesOf(state) * 60;
    const int left = whole - static_cast<int>(state.steps % whole);
    const QPointF centre(10.5, 11);
    pen.setStrength(0.28);
    pen.line(disc(centre, 6), 2);
    pen.setStrength(1);
    pen.line(arc(centre, 6, 90, -360.0 * left / whole), 2);
    if (state.isOn("Pause")) {
        pen.box({8.5, 8.5, 1.5, 5}, 0.5);
        pen.box({11.5, 8.5, 1.5, 5}, 0.5);
    }
    const QString shown = QStringLiteral("%1:%2")
                              .arg(left / 60, 2, 10, QLatin1Char('0'))
                              .arg(left % 60, 2, 10, QLatin1Char('0'));
    pen.text({21, 0, 36, IconPen::height}, shown, digits, QFont::Normal,
             Qt::AlignLeft | Qt::AlignVCenter);
}

void cpu(IconPen& pen, const ItemState& state) {
    constexpr int columns = 11;
    const QRectF field(3, 3, 36, 16);
    pen.setStrength(0.42);
    pen.frame(field, 3.2, 1);
    pen.setStrength(1);
    for (int column = 0; column < columns; ++column) {
        const double tall = 12 * loadAt(state.steps + column);
        const double left = pen.snapped(5 + 3.0 * column);
        const double right = pen.snapped(5 + 3.0 * column + 2);
        pen.fill(roundedBox({left, 17 - tall, right - left, tall}, 0.5));
    }
}

void calendar(IconPen& pen, const ItemState&) {
    const QRectF page(3, 3, 16, 16);
    pen.frame(page, 3.2, 1.3);
    QPainterPath head = roundedBox(pen.snapped(page), 3.6);
    QPainterPath below;
    below.addRect(QRectF(0, pen.snapped(7.6), pen.width(), IconPen::height));
    pen.fill(head.subtracted(below));
    pen.text({3, 8, 16, 10.4}, QString::number(QDate::currentDate().day()), 9, QFont::Bold);
}

} // namespace orrivane::desktop::drawings
