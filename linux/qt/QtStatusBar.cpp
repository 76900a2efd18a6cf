#include <linux/qt/QtStatusBar.h>

#include <linux/qt/DrawingPainter.h>
#include <linux/qt/RoleColors.h>

#include <QGuiApplication>
#include <QPainter>
#include <QPixmap>

#include <algorithm>

namespace orrivane {

namespace {

QPixmap drawnPixmap(const Drawing& drawing, int side, const QColor& ink, bool badge) {
    QPixmap pixmap(side, side);
    pixmap.fill(Qt::transparent);
    const double longest = std::max({drawing.size.width, drawing.size.height, 1.0});
    const double scale = side / longest;
    const QSize size(qRound(drawing.size.width * scale), qRound(drawing.size.height * scale));
    const QPoint corner((side - size.width()) / 2, (side - size.height()) / 2);
    const auto palette = QGuiApplication::palette();
    QPainter painter(&pixmap);
    DrawingPainter(painter, palette).draw(drawing, QRect(corner, size));
    if (drawing.isTemplate) {
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(pixmap.rect(), ink);
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    }
    if (badge) {
        const double dot = side * 0.36;
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(roleColor(ColorRole::red, palette));
        painter.drawEllipse(QRectF(side - dot, 0, dot, dot));
    }
    return pixmap;
}

} // namespace

QIcon drawnIcon(const Drawing& drawing, const QColor& ink, bool badge) {
    QIcon icon;
    for (const int side : {16, 22, 24, 32, 44, 48, 64, 128})
        icon.addPixmap(drawnPixmap(drawing, side, ink, badge));
    return icon;
}

QtStatusItem::QtStatusItem(Ink ink)
    : ink_(std::move(ink)) {
    QObject::connect(&icon_, &QSystemTrayIcon::activated, [this](auto) {
        const auto action = action_; // it may remove the item
        if (action)
            action();
    });
}

void QtStatusItem::setImage(const Drawing& image) {
    image_ = image;
    show();
}

void QtStatusItem::setTitle(const std::string& title) {
    if (badge_ == !title.empty())
        return;
    badge_ = !title.empty();
    show();
}

void QtStatusItem::setToolTip(const std::optional<std::string>& toolTip) {
    icon_.setToolTip(toolTip ? QString::fromStdString(*toolTip) : QStringLiteral("Orrivane"));
}

void QtStatusItem::show() {
    const auto ink = ink_ ? ink_() : std::nullopt;
    icon_.setIcon(drawnIcon(
        image_, ink.value_or(QGuiApplication::palette().color(QPalette::WindowText)), badge_));
    icon_.show();
}

std::optional<QRect> QtStatusItem::place() const {
    const auto geometry = icon_.geometry();
    return geometry.isValid() && !geometry.isEmpty() ? std::optional(geometry) : std::nullopt;
}

std::unique_ptr<StatusItem> QtStatusBar::createItem(double) {
    return std::make_unique<QtStatusItem>(ink_);
}

} // namespace orrivane
