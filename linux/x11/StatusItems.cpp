#include <linux/x11/StatusItems.h>

#include <algorithm>

namespace orrivane::x11 {

namespace {

constexpr std::int64_t ordinaryLayer = 0;
constexpr int largestHelper = 8; // pixels; toolkits keep small windows of their own mapped

bool isHelper(const PixelRect& rect) {
    return rect.width <= largestHelper || rect.height <= largestHelper;
}

} // namespace

StatusItems::StatusItems(Connection& connection, WindowTree& tree, X11Screens& screens)
    : connection_(connection)
    , tree_(tree)
    , screens_(screens)
    , screenChanges_(screens.onChange([this] { builtFrom_ = 0; })) {}

const std::vector<StatusItem>& StatusItems::current() {
    if (!tree_.update()) {
        items_.clear();
        entries_.clear();
        builtFrom_ = 0;
    } else if (builtFrom_ != tree_.generation()) {
        rebuild();
    }
    return items_;
}

const StatusItem* StatusItems::find(std::uint32_t window) const {
    const auto found = std::ranges::find(items_, window, &StatusItem::window);
    return found == items_.end() ? nullptr : &*found;
}

const std::vector<WindowListEntry>& StatusItems::entries() {
    current();
    return entries_;
}

void StatusItems::rebuild() {
    items_.clear();
    entries_.clear();
    const auto space = screens_.space();
    for (const auto id : tree_.icons()) {
        const auto* icon = tree_.find(id);
        if (!icon || icon->inputOnly || !tree_.isViewable(*icon))
            continue;
        StatusItem item{id, icon->serial, tree_.rootRect(*icon), {}, false};
        if (item.rect.isEmpty())
            continue;
        const auto* dock = tree_.dockOf(*icon);
        item.band = screens_.cutoutBand(item.rect).value_or(
            Space::real(tree_.rootRect(dock ? *dock : *icon)));
        const PixelRect centre{item.rect.x + item.rect.width / 2,
                               item.rect.y + item.rect.height / 2, 1, 1};
        const auto* top = tree_.topLevel(*icon);
        item.isCovered = top && isCoveredBy(*top, centre);
        const Rect bounds{{static_cast<double>(item.rect.x), item.band.minY()},
                          {static_cast<double>(item.rect.width), item.band.height()}};
        entries_.push_back(
            {WindowCensus::statusLayer, id, space.toGlobal(bounds), !item.isCovered});
        items_.push_back(item);
    }
    appendOrdinaryWindows(space);
    // Without screens the frames are guesses; they are worked out again the next time.
    builtFrom_ = screens_.monitors().empty() ? 0 : tree_.generation();
}

void StatusItems::appendOrdinaryWindows(const Space& space) {
    const auto* root = tree_.find(connection_.root());
    if (!root)
        return;
    for (const auto id : root->children)
        if (const auto* window = tree_.find(id); window && !window->inputOnly)
            entries_.push_back(
                {ordinaryLayer, id, space.toGlobal(tree_.rootRect(*window)), window->mapped});
}

bool StatusItems::isCoveredBy(const TreeWindow& topLevel, const PixelRect& rect) const {
    return std::ranges::any_of(tree_.above(topLevel), [&](const TreeWindow* window) {
        PixelRect bounding = window->bounding;
        const auto place = tree_.rootRect(*window);
        bounding.x += place.x;
        bounding.y += place.y;
        return !isOwn(window->id) && bounding.contains(rect);
    });
}

const TreeWindow* StatusItems::dock() {
    current();
    return findDock();
}

const TreeWindow* StatusItems::findDock() {
    for (const auto& item : items_)
        if (const auto* icon = tree_.find(item.window))
            if (const auto* dock = tree_.dockOf(*icon))
                return dock;
    const TreeWindow* any = nullptr;
    for (const auto& [id, window] : tree_.windows()) {
        if (window.type != WindowType::dock || !tree_.isViewable(window) || isOwn(id))
            continue;
        if (screens_.cutoutBand(tree_.rootRect(window)))
            return &window;
        any = &window;
    }
    return any;
}

std::optional<int> StatusItems::rightEdgeOfDockContent() {
    const auto* dock = this->dock();
    if (!dock)
        return std::nullopt;
    const auto rect = tree_.rootRect(*dock);
    for (const auto& monitor : screens_.monitors())
        if (monitor.cutout && monitor.rect.intersects(rect))
            return contentEdge(*dock, *dock, monitor.cutout->minX());
    return std::nullopt;
}

std::optional<int> StatusItems::contentEdge(const TreeWindow& dock, const TreeWindow& window,
                                            double notch) const {
    std::optional<int> edge;
    for (const auto id : window.children) {
        const auto* child = tree_.find(id);
        if (!child || !child->mapped || child->role != WindowRole::dockPart ||
            isTrayPart(dock, *child))
            continue;
        const auto rect = tree_.rootRect(*child);
        // What reaches past the notch or holds the tray is a container; what it shows is inside it.
        const bool isContainer = rect.right() > notch || holdsTray(dock, *child);
        const auto right =
            isContainer ? contentEdge(dock, *child, notch) : std::optional(rect.right());
        if (!isHelper(rect) && right)
            edge = std::max(edge.value_or(*right), *right);
    }
    return edge;
}

// Sockets of icons and the tray's own plugin show nothing of an application's menus.
bool StatusItems::isTrayPart(const TreeWindow& dock, const TreeWindow& window) const {
    const auto client = connection_.clientOf(window.id);
    const auto trayClient = connection_.clientOf(tree_.trayOwner());
    const bool isPlugin =
        tree_.trayOwner() != 0 && client == trayClient && client != connection_.clientOf(dock.id);
    return isPlugin || window.id == tree_.trayOwner() ||
           std::ranges::any_of(window.children, [&](std::uint32_t id) {
               const auto* child = tree_.find(id);
               return child && child->role == WindowRole::icon;
           });
}

bool StatusItems::holdsTray(const TreeWindow& dock, const TreeWindow& window) const {
    return isTrayPart(dock, window) || std::ranges::any_of(window.children, [&](std::uint32_t id) {
               const auto* child = tree_.find(id);
               return child && holdsTray(dock, *child);
           });
}

} // namespace orrivane::x11
