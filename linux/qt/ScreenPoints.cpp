#include <linux/qt/ScreenPoints.h>

#include <QGuiApplication>
#include <QScreen>

namespace orrivane {

namespace {

// Without a screen nothing is shown, and any height does.
double baseline() {
    const auto* screen = QGuiApplication::primaryScreen();
    return screen ? screen->geometry().height() : 0;
}

} // namespace

QRect fromPoints(const Rect& rect) {
    const int left = qRound(rect.minX());
    const int top = qRound(baseline() - rect.maxY());
    return {left, top, qRound(rect.width()), qRound(rect.height())};
}

Rect toPoints(const QRect& rect) {
    return {{double(rect.x()), baseline() - rect.y() - rect.height()},
            {double(rect.width()), double(rect.height())}};
}

} // namespace orrivane
