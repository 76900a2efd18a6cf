#include <desktop/windows/WindowFrame.h>

#include <algorithm>

#include <QBitmap>
#include <QEvent>
#include <QPainter>
#include <QWindow>

namespace orrivane::desktop {

namespace {

constexpr double cornerRadius = 11;
constexpr double gripSize = 14;

QBitmap roundedShape(QSize size, double radius) {
    QBitmap shape(size);
    shape.clear();
    QPainter painter(&shape);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::color1);
    painter.drawRoundedRect(QRect(QPoint(), size), radius, radius);
    return shape;
}

} // namespace

WindowFrame::WindowFrame(const Theme& theme, QWidget* content)
    : theme_(theme)
    , content_(content)
    , title_(new WindowTitle(theme, this))
    , edge_(new QWidget(this))
    , grip_(new QWidget(this))
    , toast_(new Toast(theme, this)) {
    setWindowFlags(Qt::Window | Qt::FramelessWindowHint);
    content_->setParent(this);
    content_->lower();
    edge_->setAttribute(Qt::WA_TransparentForMouseEvents);
    edge_->installEventFilter(this);
    grip_->setCursor(Qt::SizeFDiagCursor);
    grip_->installEventFilter(this);
    setMinimumSize(theme.pixels(320), theme.pixels(220));
}

void WindowFrame::resizeEvent(QResizeEvent*) {
    content_->setGeometry(rect());
    title_->setGeometry(0, 0, width(), theme_.pixels(WindowTitle::points));
    edge_->setGeometry(rect());
    const int grip = theme_.pixels(gripSize);
    grip_->setGeometry(width() - grip, height() - grip, grip, grip);
    if (isMaximized())
        clearMask();
    else
        setMask(roundedShape(size(), cornerRadius * theme_.scale));
}

bool WindowFrame::eventFilter(QObject* watched, QEvent* event) {
    if (watched == edge_ && event->type() == QEvent::Paint) {
        paintEdge();
        return true;
    }
    if (watched == grip_ && event->type() == QEvent::MouseButtonPress && !isMaximized()) {
        windowHandle()->startSystemResize(Qt::BottomEdge | Qt::RightEdge);
        return true;
    }
    return false;
}

void WindowFrame::paintEdge() {
    if (isMaximized())
        return;
    QPainter painter(edge_);
    painter.setRenderHint(QPainter::Antialiasing);
    const double line = std::max(1, theme_.pixels(0.8));
    const double radius = cornerRadius * theme_.scale - line / 2;
    painter.setPen(QPen(theme_.windowBorder, line));
    painter.drawRoundedRect(QRectF(rect()).adjusted(line / 2, line / 2, -line / 2, -line / 2),
                            radius, radius);
}

} // namespace orrivane::desktop
