#include <desktop/bar/Clock.h>

#include <algorithm>

#include <QDateTime>
#include <QFontMetrics>
#include <QLocale>
#include <QPainter>

namespace orrivane::desktop {

namespace {

constexpr double sidePadding = 8;  // points, to the items
constexpr double edgePadding = 14; // points, to the edge of the screen
constexpr double betweenParts = 9; // points
constexpr double textSize = 13;
constexpr int minute = 60'000; // milliseconds

QString dayText(const QDate& day) {
    return QLocale::c().toString(day, QStringLiteral("ddd d MMM"));
}

} // namespace

Clock::Clock(const Theme& theme, QWidget* parent)
    : QWidget(parent)
    , theme_(theme) {
    setAccessibleName(tr("Clock"));
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::CoarseTimer);
    connect(&timer_, &QTimer::timeout, this, &Clock::tick);
    tick();
}

QFont Clock::face() const {
    return theme_.font(textSize, QFont::Medium);
}

int Clock::neededWidth() const {
    const QFontMetrics metrics(face());
    int widest = 0;
    // One month of every length of name, and every day of a week in it.
    for (int month = 1; month <= 12; ++month)
        for (int day = 20; day <= 26; ++day)
            widest = std::max(widest, metrics.horizontalAdvance(dayText(QDate(2024, month, day))));
    return widest + metrics.horizontalAdvance(QStringLiteral("00:00")) +
           theme_.pixels(sidePadding + betweenParts + edgePadding);
}

void Clock::tick() {
    const auto now = QDateTime::currentDateTime();
    text_ = now.toString(QStringLiteral("HH:mm"));
    setAccessibleDescription(dayText(now.date()) + ' ' + text_);
    update();
    timer_.start(minute - now.time().msecsSinceStartOfDay() % minute);
}

void Clock::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(theme_.barForeground);
    painter.setFont(face());
    const QRect room = rect().adjusted(0, 0, -theme_.pixels(edgePadding), 0);
    painter.drawText(room, Qt::AlignVCenter | Qt::AlignRight, text_);
    const int time = QFontMetrics(face()).horizontalAdvance(QStringLiteral("00:00"));
    painter.drawText(room.adjusted(0, 0, -time - theme_.pixels(betweenParts), 0),
                     Qt::AlignVCenter | Qt::AlignRight, dayText(QDate::currentDate()));
}

} // namespace orrivane::desktop
