#include <desktop/items/ItemWindow.h>

#include <algorithm>

#include <QMouseEvent>
#include <QPainter>

namespace orrivane::desktop {

namespace {

QString titleOf(const StatusKind& kind, std::size_t part) {
    const auto name = QString::fromStdString(kind.name);
    return kind.parts.size() < 2 ? name : QStringLiteral("%1 %2").arg(name).arg(part + 1);
}

TrayWindow::Identity identityOf(const StatusKind& kind, std::size_t part) {
    return {kind.name.empty() ? std::string() : kind.id, kind.name, titleOf(kind, part)};
}

QSize naturalSizeOf(const StatusKind& kind, const Theme& theme) {
    return {theme.pixels(kind.width), theme.pixels(IconPen::height)};
}

} // namespace

ItemWindow::ItemWindow(const StatusKind& kind, std::size_t part, const ItemState& state,
                       const TrayWatch& tray, const Theme& theme)
    : TrayWindow(identityOf(kind, part), naturalSizeOf(kind, theme))
    , kind_(kind)
    , part_(kind.parts.at(part))
    , state_(state)
    , tray_(tray)
    , theme_(theme) {
    setAccessibleName(titleOf(kind, part));
    connect(&tray, &TrayWatch::lookChanged, this, qOverload<>(&QWidget::update));
}

void ItemWindow::setHighlighted(bool highlighted) {
    highlighted_ = highlighted;
    update();
}

QRect ItemWindow::highlight() const {
    const int wide = std::min(
        width(), naturalSize().width() + theme_.pixels(std::max(0, tray_.look().selectionPadding)));
    const int inset = theme_.pixels(2);
    return {(width() - wide) / 2, inset, wide, std::max(0, height() - 2 * inset)};
}

std::optional<QPoint> ItemWindow::menuCorner() const {
    return xserver::rootPosition(static_cast<xcb_window_t>(winId()),
                                 QPoint(highlight().left(), height()));
}

void ItemWindow::paintEvent(QPaintEvent*) {
    const BarLook& look = tray_.look();
    QPainter painter(this);
    painter.fillRect(rect(), look.background);
    QColor paper = look.background;
    if (highlighted_) {
        constexpr double strength = 0.16;
        const auto mixed = [](int a, int b) {
            return static_cast<int>(a * (1 - strength) + b * strength);
        };
        paper = QColor(mixed(paper.red(), look.foreground.red()),
                       mixed(paper.green(), look.foreground.green()),
                       mixed(paper.blue(), look.foreground.blue()));
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(paper);
        painter.drawRoundedRect(highlight(), 6 * theme_.scale, 6 * theme_.scale);
    }
    // A tray that grants less than was asked for gets the whole icon, smaller.
    const double fit = std::min({theme_.scale, width() / kind_.width, height() / IconPen::height});
    painter.translate(static_cast<int>((width() - kind_.width * fit) / 2),
                      static_cast<int>((height() - IconPen::height * fit) / 2));
    IconPen pen(painter, theme_, fit, kind_.width, look.foreground, paper);
    part_.drawing(pen, state_);
}

void ItemWindow::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton || event->button() == Qt::RightButton)
        emit pressed();
}

} // namespace orrivane::desktop
