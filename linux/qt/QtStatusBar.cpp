#include <linux/qt/QtStatusBar.h>

#include <linux/qt/DrawingPainter.h>
#include <linux/qt/RoleColors.h>

#include <QGuiApplication>
#include <QPainter>
#include <QPixmap>

#include <algorithm>

namespace orrivane {

namespace {

QPixmap drawnPixmap(const Drawing& drawing, int cell, const QColor& ink, bool badge, double fill) {
    QPixmap pixmap(cell, cell);
    pixmap.fill(Qt::transparent);
    const int margin = qRound(cell * (1 - fill) / 2);
    const int side = cell - 2 * margin;
    const double longest = std::max({drawing.size.width, drawing.size.height, 1.0});
    const double scale = side / longest;
    const QSize size(qRound(drawing.size.width * scale), qRound(drawing.size.height * scale));
    const QPoint corner((cell - size.width()) / 2, (cell - size.height()) / 2);
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
        painter.drawEllipse(QRectF(margin + side - dot, margin, dot, dot));
    }
    return pixmap;
}

} // namespace

QIcon drawnIcon(const Drawing& drawing, const QColor& ink, bool badge, double fill) {
    QIcon icon;
    for (const int side : {16, 22, 24, 32, 37, 44, 48, 64, 74, 128})
        icon.addPixmap(drawnPixmap(drawing, side, ink, badge, fill));
    return icon;
}

QtStatusItem::QtStatusItem(Look look)
    : look_(std::move(look)) {
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
    const auto look = look_ ? look_() : StatusIconLook();
    const auto text = QGuiApplication::palette().color(QPalette::WindowText);
    icon_.setIcon(drawnIcon(image_, look.ink.value_or(text), badge_, look.fill));
    icon_.show();
}

std::optional<QRect> QtStatusItem::place() const {
    const auto geometry = icon_.geometry();
    return geometry.isValid() && !geometry.isEmpty() ? std::optional(geometry) : std::nullopt;
}

std::unique_ptr<StatusItem> QtStatusBar::createItem(double) {
    return std::make_unique<QtStatusItem>(look_);
}

} // namespace orrivane
