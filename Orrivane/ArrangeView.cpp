#include <Orrivane/ArrangeView.h>

#include <Orrivane/IconIdentity.h>
#include <Orrivane/platform/Screens.h>
#include <Orrivane/support/Awaiters.h>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace orrivane {

namespace {

/// The item is released this far, in points, beside the neighbour it shall stand next to.
constexpr double releaseDistance = 1.0;

std::vector<std::uint32_t> ids(std::span<const StatusItemWindow> items) {
    std::vector<std::uint32_t> result;
    result.reserve(items.size());
    for (const auto& item : items)
        result.push_back(item.id);
    return result;
}

Task<> keepingAlive(std::shared_ptr<ArrangeView> view, Task<> work) {
    const auto alive = std::move(view);
    co_await std::move(work);
}

} // namespace

ArrangeView::ArrangeView(const Platform& platform, CaptureService& captures, ItemMover mover)
    : platform_(platform)
    , captures_(captures)
    , mover_(std::move(mover)) {}

void ArrangeView::begin(Task<> task) {
    start(platform_.mainLoop, keepingAlive(shared_from_this(), std::move(task)));
}

void ArrangeView::appear() {
    if (!isWorking_)
        begin(reload());
}

Task<> ArrangeView::reload() {
    clearDrag();
    limitation_ = mover_.limitation ? mover_.limitation() : std::string();
    items_ = WindowCensus::take(platform_.screens, platform_.windowList).items;
    if (captures_.screenCaptureGranted()) {
        auto captured = co_await captures_.captureIcons(ids(items()));
        images_ = std::move(captured);
    } else {
        images_ = Images{};
    }
    const auto owners = IconIdentity::resolveOwners(platform_.accessibility);
    const auto screens = platform_.screens.screens();
    Names names;
    for (const auto& item : items())
        if (const auto owner = IconIdentity::owner(item, owners, screens))
            names.insert_or_assign(item.id, owner->appName);
    names_ = std::move(names);
}

Task<> ArrangeView::refresh() {
    if (isWorking_)
        co_return;
    isWorking_ = true;
    co_await reload();
    isWorking_ = false;
}

Task<> ArrangeView::perform(StatusItemWindow item, double targetX) {
    isWorking_ = true;
    co_await mover_.move(item, targetX);
    Sleep pause(settlingTime);
    co_await pause;
    co_await reload();
    isWorking_ = false;
}

void ArrangeView::beginDrag(std::uint32_t id) {
    draggingID_ = id;
}

// A drag that ends without a drop, by Escape or over nothing, leaves no tile dimmed and no line.
void ArrangeView::endDrag() {
    clearDrag();
    if (auto drop = std::exchange(acceptedDrop_, std::nullopt))
        begin(perform(drop->item, drop->targetX));
}

void ArrangeView::clearInsertion(int index) {
    const auto gap = insertionIndex();
    if (gap && (*gap == index || *gap - 1 == index))
        insertionIndex_ = std::nullopt;
}

void ArrangeView::step(std::uint32_t id, int direction) {
    const auto item = std::ranges::find(items(), id, &StatusItemWindow::id);
    if (isWorking_ || acceptedDrop_ || item == items().end() || draggingID().value_or(id) != id)
        return;
    beginDrag(id);
    setInsertion(steppedGap(static_cast<int>(item - items().begin()), insertionIndex(), direction,
                            static_cast<int>(items().size())));
}

void ArrangeView::clearDrag() {
    draggingID_ = std::nullopt;
    insertionIndex_ = std::nullopt;
}

bool ArrangeView::performDrop() {
    auto drop = decideDrop();
    clearDrag();
    if (!drop)
        return false;
    acceptedDrop_ = drop;
    return true;
}

std::optional<ArrangeView::Drop> ArrangeView::decideDrop() const {
    if (isWorking_ || acceptedDrop_ || !draggingID() || !insertionIndex())
        return std::nullopt;
    const auto target = targetX(items(), *draggingID(), *insertionIndex());
    if (!target)
        return std::nullopt;
    return Drop{*std::ranges::find(items(), *draggingID(), &StatusItemWindow::id), *target};
}

int ArrangeView::gap(double x, double tileWidth, int index) {
    return x < tileWidth * 0.5 ? index : index + 1;
}

int ArrangeView::steppedGap(int index, std::optional<int> gap, int direction, int count) {
    const int place = gap.value_or(index) > index ? *gap - 1 : gap.value_or(index);
    const int next = std::clamp(place + direction, 0, std::max(0, count - 1));
    // Beside its own place either gap leaves it there; the one ahead shows which way it went.
    return next > index || (next == index && direction > 0) ? next + 1 : next;
}

std::optional<double> ArrangeView::targetX(std::span<const StatusItemWindow> items,
                                           std::uint32_t draggingID, int insertionIndex) {
    const auto dragged = std::ranges::find(items, draggingID, &StatusItemWindow::id);
    if (dragged == items.end() || insertionIndex < 0)
        return std::nullopt;
    const auto from = static_cast<std::size_t>(dragged - items.begin());
    const auto to = static_cast<std::size_t>(insertionIndex);
    if (to == from || to == from + 1)
        return std::nullopt;
    if (to < items.size())
        return items[to].frame.minX() - releaseDistance;
    return items.back().frame.maxX() + releaseDistance;
}

} // namespace orrivane
