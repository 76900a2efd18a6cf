#include <linux/qt/StripWidget.h>

#include <linux/qt/DrawingPainter.h>
#include <linux/qt/StripAccessible.h>

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPalette>
#include <QTextDocument>
#include <QToolTip>

#include <algorithm>
#include <cmath>
#include <utility>

namespace orrivane {

namespace {

// A whole pixel that was divided by the ratio and multiplied again is one still.
constexpr double rounding = 0.01; // pixels

// The toolkit would take a name that contains a tag for marked-up text.
QString tooltipText(const std::string& name) {
    const auto text = QString::fromStdString(name);
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal) : text;
}

// Light or dark is what the ground is, where the program knows it, whatever its own windows are.
QPalette paletteOn(const QImage& ground, QPalette palette) {
    if (ground.isNull())
        return palette;
    const QColor mean =
        ground.scaled(1, 1, Qt::IgnoreAspectRatio, Qt::SmoothTransformation).pixel(0, 0);
    const QPalette suitable(mean);
    palette.setColor(QPalette::Window, mean);
    palette.setColor(QPalette::WindowText, suitable.color(QPalette::WindowText));
    return palette;
}

bool looksTheSame(const StripCell& a, const StripCell& b) {
    return a.pixels == b.pixels && a.label == b.label;
}

} // namespace

// Not a tool window: the toolkit would raise one above the menus whenever it is shown.
StripWidget::StripWidget()
    : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus |
                           Qt::X11BypassWindowManagerHint) {
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_PaintOnScreen);
    setAttribute(Qt::WA_NoSystemBackground);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_AlwaysShowToolTips);
    setAttribute(Qt::WA_QuitOnClose, false);
    setFocusPolicy(Qt::NoFocus);
    setWindowTitle(QStringLiteral("Orrivane"));
    // A geometry of its own keeps the toolkit from choosing one when the window is shown.
    setGeometry(0, 0, 1, 1);
    StripAccessible::install();
}

StripWidget::~StripWidget() {
    // Whoever asks from here on gets the toolkit's own answer for a plain widget.
    if (auto* accessible = QAccessible::queryAccessibleInterface(this))
        QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(accessible));
}

bool StripWidget::connectToServer() {
    return surface_.open(winId());
}

void StripWidget::setCells(std::vector<StripCell> cells, const QSize& pixels) {
    StripAccessible::announceRemovals(*this, cells);
    const bool resized = picture_.size() != pixels;
    if (resized)
        picture_ = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
    const auto before = std::exchange(cells_, std::move(cells));
    markDifferences(before, resized);
    refreshTooltip();
    StripAccessible::announceChanges(*this, before);
}

void StripWidget::setBackdrop(StripBackdrop backdrop) {
    if (backdrop.blended == backdrop_.blended && backdrop.pixels == backdrop_.pixels)
        return;
    backdrop_ = std::move(backdrop);
    markDirty(picture_.rect());
}

void StripWidget::flush() {
    const auto region = std::exchange(dirty_, QRegion()) & picture_.rect();
    if (region.isEmpty())
        return;
    compose(region);
    if (isVisible())
        surface_.present(picture_, region);
}

const QImage& StripWidget::picture() {
    flush();
    return picture_;
}

const StripCell* StripWidget::cell(const CellId& id) const {
    const auto found = std::ranges::find(cells_, id, &StripCell::id);
    return found == cells_.end() ? nullptr : &*found;
}

const StripCell* StripWidget::cellAt(const QPointF& position) const {
    const double ratio = devicePixelRatioF();
    const auto pixel = [ratio](double points, int extent) {
        const int device = static_cast<int>(std::floor(points * ratio + rounding));
        // Qt 6.4 rounds the mouse to whole points: the last pixel may come out beyond the edge.
        const int excess = static_cast<int>(ratio / 2 + rounding);
        return device >= extent && device - excess < extent ? extent - 1 : device;
    };
    const QPoint point(pixel(position.x(), picture_.width()),
                       pixel(position.y(), picture_.height()));
    const auto found = std::ranges::find_if(
        cells_, [&point](const StripCell& each) { return each.pixels.contains(point); });
    return found == cells_.end() ? nullptr : &*found;
}

QRect StripWidget::toolkitRect(const QRect& pixels) const {
    const double ratio = devicePixelRatioF();
    return QRectF(pixels.x() / ratio, pixels.y() / ratio, pixels.width() / ratio,
                  pixels.height() / ratio)
        .toRect();
}

void StripWidget::activate(const CellId& id, Qt::MouseButton button) {
    const auto run = [this, id, button] {
        const auto* target = cell(id);
        if (!target)
            return;
        // A copy: the action may replace the cells.
        const auto action = button == Qt::LeftButton ? target->action : target->secondaryAction;
        if (action)
            action();
    };
    QMetaObject::invokeMethod(this, run, Qt::QueuedConnection);
}

bool StripWidget::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const auto* target = cellAt(help->pos());
    if (target && !target->tooltip.empty()) {
        showTooltip(target->id, help->globalPos());
    } else {
        QToolTip::hideText();
        event->ignore();
    }
    return true;
}

void StripWidget::paintEvent(QPaintEvent*) {
    flush();
    surface_.present(picture_, picture_.rect());
}

void StripWidget::mousePressEvent(QMouseEvent* event) {
    const bool known = event->button() == Qt::LeftButton || event->button() == Qt::RightButton;
    const auto* target = cellAt(event->position());
    // A press with no other button down also replaces one whose release never came.
    const bool alone = event->buttons() == Qt::MouseButtons(event->button());
    if (known && target && (!press_ || alone))
        press_ = Press{target->id, event->button()};
}

void StripWidget::mouseReleaseEvent(QMouseEvent* event) {
    if (!press_ || press_->button != event->button())
        return;
    const auto press = *std::exchange(press_, std::nullopt);
    const auto* target = cellAt(event->position());
    if (target && target->id == press.id)
        activate(press.id, press.button);
}

void StripWidget::mouseDoubleClickEvent(QMouseEvent* event) {
    mousePressEvent(event);
}

void StripWidget::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange)
        markDirty(picture_.rect());
    QWidget::changeEvent(event);
}

void StripWidget::hideEvent(QHideEvent* event) {
    press_.reset();
    if (tooltip_ && QToolTip::text() == tooltip_->text)
        QToolTip::hideText();
    tooltip_.reset();
    QWidget::hideEvent(event);
}

void StripWidget::markDirty(const QRegion& region) {
    dirty_ += region;
    if (dirty_.isEmpty() || std::exchange(flushScheduled_, true))
        return;
    const auto run = [this] {
        flushScheduled_ = false;
        flush();
    };
    QMetaObject::invokeMethod(this, run, Qt::QueuedConnection);
}

void StripWidget::markDifferences(const std::vector<StripCell>& before, bool resized) {
    QRegion region;
    if (resized)
        region = picture_.rect();
    for (const auto& old : before)
        if (const auto* now = cell(old.id); !now || !looksTheSame(old, *now))
            region += old.pixels;
    for (const auto& now : cells_) {
        const auto old = std::ranges::find(before, now.id, &StripCell::id);
        if (old == before.end() || !looksTheSame(*old, now))
            region += now.pixels;
    }
    if (!region.isEmpty())
        markDirty(region);
}

void StripWidget::compose(const QRegion& region) {
    QPainter painter(&picture_);
    painter.setClipRegion(region);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    const QColor ground = palette().color(QPalette::Window);
    painter.fillRect(picture_.rect(), backdrop_.blended ? QColor(Qt::transparent) : ground);
    if (!backdrop_.blended && !backdrop_.pixels.isNull())
        painter.drawImage(0, 0, backdrop_.pixels);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    const auto colors = paletteOn(backdrop_.pixels, palette());
    for (const auto& each : cells_) {
        if (!region.intersects(each.pixels))
            continue;
        painter.save();
        painter.setClipRect(each.pixels, Qt::IntersectClip);
        DrawingPainter(painter, colors).draw(each.label, each.pixels);
        painter.restore();
    }
}

void StripWidget::showTooltip(const CellId& id, const QPoint& globalPosition) {
    const auto* target = cell(id);
    tooltip_ = Tooltip{id, tooltipText(target->tooltip), globalPosition};
    QToolTip::showText(globalPosition, tooltip_->text, this, toolkitRect(target->pixels));
}

void StripWidget::refreshTooltip() {
    if (!tooltip_)
        return;
    if (!QToolTip::isVisible() || QToolTip::text() != tooltip_->text) {
        tooltip_.reset();
        return;
    }
    const auto* target = cell(tooltip_->id);
    if (!target || target->tooltip.empty()) {
        QToolTip::hideText();
        tooltip_.reset();
    } else if (tooltipText(target->tooltip) != tooltip_->text) {
        showTooltip(target->id, tooltip_->globalPosition);
    }
}

} // namespace orrivane
