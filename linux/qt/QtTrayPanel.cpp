#include <linux/qt/QtTrayPanel.h>

#include <linux/qt/StripLayout.h>
#include <linux/qt/StripWidget.h>

#include <algorithm>
#include <utility>

namespace orrivane {

namespace {

constexpr int statusWindowLevel = 25;

using Images = std::vector<Image>;

void collectImages(const View& view, Images& images) {
    if (const auto* stack = std::get_if<HorizontalStack>(&view.node)) {
        for (const auto& child : stack->children)
            collectImages(child, images);
        return;
    }
    for (const auto& primitive : std::get<Button>(view.node).label.primitives)
        if (const auto* drawn = std::get_if<DrawnImage>(&primitive))
            images.push_back(drawn->image);
}

bool bringsNewImages(const View& now, const View& before) {
    Images known;
    Images shown;
    collectImages(before, known);
    collectImages(now, shown);
    return std::ranges::any_of(shown, [&known](const Image& image) {
        return std::ranges::find(known, image) == known.end();
    });
}

// A ground has no holes: whatever alpha it came with counts as full.
QImage toQImage(const PixelImage& image) {
    QImage copy(image.pixelWidth(), image.pixelHeight(), QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < copy.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(copy.scanLine(y));
        for (int x = 0; x < copy.width(); ++x)
            line[x] = image.at(x, y) | 0xff000000U;
    }
    return copy;
}

StripCell makeCell(const LaidOutButton& laidOut, const QRect& pixels) {
    const auto& view = *laidOut.view;
    const auto& button = *laidOut.button;
    return {laidOut.id, view.tooltip,      view.accessibilityName,    button.label,
            pixels,     button.action.run, button.secondaryAction.run};
}

} // namespace

QtTrayPanel::QtTrayPanel(PanelStage& stage)
    : stage_(stage) {}

QtTrayPanel::~QtTrayPanel() = default;

int QtTrayPanel::windowLevelForKey(int key) {
    return key == statusWindowLevelKey ? statusWindowLevel : 0;
}

void QtTrayPanel::create(const TrayPanelConfiguration&) {
    widget_ = std::make_unique<StripWidget>();
    change_ = stage_.onChange([this] { stageChanged(); });
}

void QtTrayPanel::setRoot(const View& root) {
    backdropStale_ = backdropStale_ || bringsNewImages(root, root_);
    root_ = root;
    layOutLater();
}

void QtTrayPanel::setFrame(const Rect& frame) {
    const auto previous = place_;
    if (!(frame == frame_) || stage_.pixels(frame) != place_) {
        frame_ = frame;
        place_ = stage_.pixels(frame);
        cellsStale_ = true;
    }
    if (place_ != previous) {
        backdropStale_ = true;
        if (widget_->isVisible())
            place();
    }
    updateMapping();
}

void QtTrayPanel::orderFrontRegardless() {
    wanted_ = true;
    updateMapping();
}

void QtTrayPanel::orderOut() {
    wanted_ = false;
    updateMapping();
}

// A frame usually follows; cells laid out in the old one would jump.
void QtTrayPanel::layOutLater() {
    if (std::exchange(cellsStale_, true))
        return;
    const auto layOut = [this] { layOutCells(); };
    QMetaObject::invokeMethod(widget_.get(), layOut, Qt::QueuedConnection);
}

void QtTrayPanel::layOutCells() {
    if (!std::exchange(cellsStale_, false))
        return;
    std::vector<StripCell> cells;
    for (const auto& laidOut : layOut(root_, {frame_.width(), frame_.height()}))
        cells.push_back(
            makeCell(laidOut, pixels(laidOut.left, laidOut.top, laidOut.right, laidOut.bottom)));
    widget_->setCells(std::move(cells), QSize(place_.width, place_.height));
}

// Edges go through the stage one by one, measured from the panel's own, so that cells which share
// an edge share a pixel and the outer ones end exactly where the panel does.
QRect QtTrayPanel::pixels(double left, double top, double right, double bottom) const {
    const auto edge = [this](double x, double y) {
        const double fromBottom = frame_.height() - y;
        const auto pixel = stage_.pixels({{frame_.minX() + x, frame_.minY() + fromBottom}, {0, 0}});
        return QPoint(pixel.x - place_.x, pixel.y - place_.y);
    };
    const auto first = edge(left, top);
    const auto last = edge(right, bottom);
    return {first, QSize(last.x() - first.x(), last.y() - first.y())};
}

void QtTrayPanel::place() {
    stage_.place(place_);
}

void QtTrayPanel::updateMapping() {
    layOutCells();
    const bool mapped = wanted_ && !place_.isEmpty() && !stage_.dockIsCovered();
    if (!mapped) {
        widget_->hide();
        return;
    }
    const bool first = !widget_->isVisible();
    if (first && !prepareWindow())
        return;
    if (backdropStale_)
        refreshBackdrop();
    widget_->flush();
    if (first)
        widget_->show();
}

// The stage speaks to the server through another connection: the window has to exist there before
// the stage hears of it, and to be in its place before it is seen.
bool QtTrayPanel::prepareWindow() {
    widget_->winId();
    if (!adopted_) {
        if (!widget_->connectToServer())
            return false;
        stage_.adopt(static_cast<std::uint32_t>(widget_->winId()));
        adopted_ = true;
    }
    place();
    return true;
}

void QtTrayPanel::refreshBackdrop() {
    backdropStale_ = false;
    backdropRequest_ = std::make_shared<int>();
    if (stage_.isComposited() && widget_->canBlend()) {
        widget_->setBackdrop({true, {}});
        return;
    }
    const auto answer = [this, request = std::weak_ptr(backdropRequest_)](
                            const std::shared_ptr<const PixelImage>& image) {
        if (!request.expired())
            widget_->setBackdrop({false, image ? toQImage(*image) : QImage()});
    };
    stage_.backdrop(place_, answer);
}

void QtTrayPanel::stageChanged() {
    const auto moved = stage_.pixels(frame_);
    cellsStale_ = cellsStale_ || moved != place_;
    place_ = moved;
    if (widget_->isVisible())
        place();
    backdropStale_ = true;
    updateMapping();
}

} // namespace orrivane
