#include <linux/qt/view/SpinnerWidget.h>

#include <QPainter>
#include <QTimerEvent>

namespace orrivane {

namespace {

constexpr int spokes = 8;
constexpr int side = 16;
constexpr int stepMilliseconds = 100;

} // namespace

SpinnerWidget::SpinnerWidget() {
    setFixedSize(side, side);
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void SpinnerWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(side / 2.0, side / 2.0);
    for (int i = 0; i < spokes; ++i) {
        auto color = palette().color(QPalette::WindowText);
        const int age = (step_ - i + spokes) % spokes;
        color.setAlphaF(0.8F - 0.65F * float(age) / float(spokes - 1));
        painter.setPen(QPen(color, 1.8, Qt::SolidLine, Qt::RoundCap));
        painter.save();
        painter.rotate(i * 360.0 / spokes);
        painter.drawLine(QPointF(0, -3.6), QPointF(0, -6.4));
        painter.restore();
    }
}

void SpinnerWidget::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    timer_.start(stepMilliseconds, this);
}

void SpinnerWidget::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    timer_.stop();
}

void SpinnerWidget::timerEvent(QTimerEvent* event) {
    if (event->timerId() != timer_.timerId())
        return QWidget::timerEvent(event);
    step_ = (step_ + 1) % spokes;
    update();
}

} // namespace orrivane
