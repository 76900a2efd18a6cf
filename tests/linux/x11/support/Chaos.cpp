#include "Chaos.h"

#include <linux/x11/WindowTree.h>

#include <sstream>
#include <stdexcept>

namespace orrivane::x11 {

namespace {
constexpr std::size_t mostWindows = 60;
}

Chaos::Chaos(const std::string& display, Random& random)
    : display_(display)
    , random_(random) {
    for (int i = 0; i < 4; ++i)
        clients_.push_back(std::make_unique<XClient>(display));
    auto& manager = *clients_[0];
    const auto check = manager.create({.area = {-10, -10, 1, 1}});
    manager.setNumbers(manager.root(), "_NET_SUPPORTING_WM_CHECK", {check}, "WINDOW");
    moveTray();
}

XClient& Chaos::anyone() {
    return *clients_[static_cast<std::size_t>(
        random_.integer(0, static_cast<int>(clients_.size()) - 1))];
}

Chaos::Known* Chaos::any() {
    if (windows_.empty())
        return nullptr;
    return &windows_[static_cast<std::size_t>(
        random_.integer(0, static_cast<int>(windows_.size()) - 1))];
}

xcb_window_t Chaos::anyParent() {
    const auto* known = any();
    return known && random_.chance(0.7) ? known->window : XCB_NONE;
}

PixelRect Chaos::area() {
    return {random_.integer(-20, 600), random_.integer(-20, 400), random_.integer(1, 300),
            random_.integer(1, 200)};
}

void Chaos::create() {
    auto& client = anyone();
    const auto window =
        client.create({.parent = anyParent(), .area = area(), .border = random_.integer(0, 2)});
    windows_.push_back({&client, window});
    if (random_.chance(0.8))
        client.map(window);
}

void Chaos::destroy() {
    const auto position = random_.integer(0, static_cast<int>(windows_.size()) - 1);
    const auto known = windows_[static_cast<std::size_t>(position)];
    windows_.erase(windows_.begin() + position);
    known.owner->destroy(known.window);
    if (random_.chance(0.3)) {
        known.owner->createAs(known.window, {.parent = anyParent(), .area = area()});
        windows_.push_back(known);
    }
}

void Chaos::restructure(Known& known) {
    auto& client = *known.owner;
    switch (random_.integer(0, 5)) {
    case 0:
    case 1: {
        const auto parent = anyParent();
        return client.reparent(known.window, parent == XCB_NONE ? client.root() : parent,
                               random_.integer(0, 100), random_.integer(0, 100));
    }
    case 2:
        return client.circulate(client.root(), random_.chance(0.5));
    case 3:
        return client.restack(known.window, random_.chance(0.5), any()->window);
    default:
        return client.restack(known.window, random_.chance(0.5));
    }
}

void Chaos::describe(Known& known) {
    auto& client = *known.owner;
    switch (random_.integer(0, 3)) {
    case 0:
        return client.setXembedInfo(known.window);
    case 1:
        return client.remove(known.window, "_XEMBED_INFO");
    case 2:
        // Programs say what a window is before they map it.
        client.unmap(known.window);
        client.setType(known.window, random_.chance(0.7) ? "DOCK" : "NORMAL");
        return client.map(known.window);
    default:
        client.unmap(known.window);
        client.remove(known.window, "_NET_WM_WINDOW_TYPE");
        return client.map(known.window);
    }
}

void Chaos::change(Known& known) {
    auto& client = *known.owner;
    switch (random_.integer(0, 5)) {
    case 0:
        return client.map(known.window);
    case 1:
        return client.unmap(known.window);
    case 2:
        return client.shapeBounding(known.window, area());
    case 3:
        return client.unshapeBounding(known.window);
    case 4:
        return client.setBorder(known.window, random_.integer(0, 3));
    default:
        return client.move(known.window, area());
    }
}

void Chaos::moveTray() {
    auto& tray = *clients_[static_cast<std::size_t>(random_.integer(1, 2))];
    const auto owner = tray.create({.area = {-100, -100, 10, 10}});
    tray.own("_NET_SYSTEM_TRAY_S0", owner);
    tray.announce("_NET_SYSTEM_TRAY_S0", owner);
    windows_.push_back({&tray, owner});
}

void Chaos::step() {
    // Windows inside destroyed ones, or put into one of their own, are refused.
    try {
        const auto kind = random_.integer(0, 99);
        if (windows_.empty() || (kind < 25 && windows_.size() < mostWindows))
            create();
        else if (kind < 35)
            destroy();
        else if (kind < 60)
            restructure(*any());
        else if (kind < 78)
            describe(*any());
        else if (kind < 98)
            change(*any());
        else
            moveTray();
    } catch (const std::runtime_error&) {
    }
}

std::vector<std::string> inWords(const WindowTree& tree, std::uint32_t root) {
    std::vector<std::string> lines;
    std::vector<std::uint32_t> open{root};
    while (!open.empty()) {
        const auto id = open.back();
        open.pop_back();
        const auto* window = tree.find(id);
        if (!window) {
            lines.push_back(std::to_string(id) + " is not known");
            continue;
        }
        std::ostringstream line;
        const auto& [x, y, width, height] = window->geometry;
        line << std::hex << id << " in " << window->parent << std::dec << " role "
             << static_cast<int>(window->role) << " type " << static_cast<int>(window->type)
             << " at " << x << ',' << y << ' ' << width << 'x' << height << '+' << window->border
             << (window->mapped ? " mapped" : "") << (window->inputOnly ? " input-only" : "");
        if (window->parent == root)
            line << " shaped " << window->isShaped << ' ' << window->bounding.x << ','
                 << window->bounding.y << ' ' << window->bounding.width << 'x'
                 << window->bounding.height;
        lines.push_back(line.str());
        open.insert(open.end(), window->children.rbegin(), window->children.rend());
    }
    lines.push_back(std::to_string(tree.windows().size()) + " windows");
    return lines;
}

} // namespace orrivane::x11
