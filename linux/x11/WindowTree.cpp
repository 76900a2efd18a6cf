#include <linux/x11/WindowTree.h>

#include <algorithm>

// The mirror's questions: what is known, and what follows from it. Reading is in
// WindowTreeReading.cpp, keeping up with events in WindowTreeEvents.cpp.

namespace orrivane::x11 {

WindowTree::WindowTree(Connection& connection)
    : connection_(connection)
    , events_(connection.onEvent([this](const xcb_generic_event_t& event) { handle(event); })) {}

void WindowTree::invalidate() {
    windows_.clear();
    dirty_.clear();
    rootsKnown_ = false;
    wasComplete_ = false;
    changed();
}

const TreeWindow* WindowTree::find(std::uint32_t id) const {
    const auto found = windows_.find(id);
    return found == windows_.end() ? nullptr : &found->second;
}

std::vector<std::uint32_t> WindowTree::icons() const {
    std::vector<std::uint32_t> result;
    std::vector<std::uint32_t> open;
    if (wasComplete_)
        open.push_back(connection_.root());
    while (!open.empty()) {
        const auto* window = find(open.back());
        open.pop_back();
        if (!window)
            continue;
        if (window->role == WindowRole::icon)
            result.push_back(window->id);
        open.insert(open.end(), window->children.rbegin(), window->children.rend());
    }
    return result;
}

PixelRect WindowTree::rootRect(const TreeWindow& window) const {
    PixelRect rect = window.geometry;
    rect.x += window.border;
    rect.y += window.border;
    for (const auto* parent = find(window.parent); parent; parent = find(parent->parent)) {
        rect.x += parent->geometry.x + parent->border;
        rect.y += parent->geometry.y + parent->border;
    }
    return rect;
}

bool WindowTree::isViewable(const TreeWindow& window) const {
    for (const auto* ancestor = &window; ancestor; ancestor = find(ancestor->parent)) {
        if (!ancestor->mapped)
            return false;
        if (ancestor->role == WindowRole::root)
            return true;
    }
    return false;
}

const TreeWindow* WindowTree::topLevel(const TreeWindow& window) const {
    const auto* ancestor = &window;
    while (ancestor && ancestor->parent != connection_.root())
        ancestor = find(ancestor->parent);
    return ancestor;
}

const TreeWindow* WindowTree::dockOf(const TreeWindow& window) const {
    const TreeWindow* dock = nullptr;
    const TreeWindow* outermost = nullptr;
    for (const auto* ancestor = &window; ancestor; ancestor = find(ancestor->parent)) {
        if (ancestor->type == WindowType::dock)
            dock = ancestor;
        if (ancestor->role == WindowRole::dockPart)
            outermost = ancestor;
    }
    return dock ? dock : outermost;
}

std::vector<const TreeWindow*> WindowTree::above(const TreeWindow& topLevel) const {
    std::vector<const TreeWindow*> result;
    const auto* root = find(connection_.root());
    if (!root)
        return result;
    auto position = std::ranges::find(root->children, topLevel.id);
    if (position == root->children.end())
        return result;
    for (++position; position != root->children.end(); ++position) {
        const auto* window = find(*position);
        if (window && window->mapped && !window->inputOnly)
            result.push_back(window);
    }
    return result;
}

WindowRole WindowTree::roleOf(const TreeWindow& window) const {
    if (window.parent == 0)
        return WindowRole::root;
    const auto* parent = find(window.parent);
    if (!parent || parent->role == WindowRole::icon || parent->role == WindowRole::other)
        return WindowRole::other;
    const auto client = connection_.clientOf(window.id);
    const bool trayExists = trayOwner_ != 0;
    const auto trayClient = connection_.clientOf(trayOwner_);
    if (parent->role == WindowRole::dockPart) {
        const bool docked = trayExists && connection_.clientOf(parent->id) == trayClient &&
                            client != trayClient && window.hasXembedInfo;
        return docked ? WindowRole::icon : WindowRole::dockPart;
    }
    if (window.type == WindowType::dock || (trayExists && client == trayClient))
        return WindowRole::dockPart;
    if (managerWindow_ != 0 && client == connection_.clientOf(managerWindow_))
        return WindowRole::managed;
    return WindowRole::other;
}

bool WindowTree::wantsChildren(const TreeWindow& window) const {
    return window.role == WindowRole::root || window.role == WindowRole::managed ||
           window.role == WindowRole::dockPart;
}

void WindowTree::insertChild(std::uint32_t parent, std::uint32_t child) {
    auto& window = windows_[child];
    if (window.id == child && window.parent == parent)
        return;
    if (window.id == child)
        detach(child);
    else
        window.serial = ++lastSerial_;
    window.id = child;
    window.parent = parent;
    windows_[parent].children.push_back(child);
}

void WindowTree::detach(std::uint32_t id) {
    const auto* window = find(id);
    if (!window)
        return;
    const auto parent = windows_.find(window->parent);
    if (parent != windows_.end())
        std::erase(parent->second.children, id);
}

void WindowTree::forget(std::uint32_t id) {
    detach(id);
    std::vector<std::uint32_t> open{id};
    while (!open.empty()) {
        const auto found = windows_.find(open.back());
        open.pop_back();
        if (found == windows_.end())
            continue;
        open.insert(open.end(), found->second.children.begin(), found->second.children.end());
        dirty_.erase(found->first);
        windows_.erase(found);
    }
    changed();
}

void WindowTree::markDirty(std::uint32_t id) {
    if (windows_.contains(id)) {
        dirty_.insert(id);
        changed();
    }
}

} // namespace orrivane::x11
