#include <tests/macos/fakes/WindowServer.h>

#include <array>
#include <optional>

namespace orrivane::fakes {

WindowServer& WindowServer::shared() {
    static WindowServer server;
    return server;
}

Any windowEntry(std::int64_t layer, std::int64_t number, const Any& bounds, bool isOnscreen) {
    std::vector<std::pair<std::string, Any>> members{{"kCGWindowLayer", integer(layer)},
                                                     {"kCGWindowNumber", integer(number)},
                                                     {"kCGWindowBounds", bounds},
                                                     {"kCGWindowOwnerPID", integer(4711)},
                                                     {"kCGWindowOwnerName", text("Editor")}};
    // The system leaves the key out where the window is not on screen.
    if (isOnscreen)
        members.emplace_back("kCGWindowIsOnscreen", truth(true));
    return table(members);
}

namespace {

std::optional<double> number(CFDictionaryRef representation, const char* key) {
    const auto* table = Heap::shared().find<Table>(representation);
    if (!table)
        return std::nullopt;
    const std::string ascii(key);
    for (const auto& [name, value] : table->members) {
        if (name != std::u16string(ascii.begin(), ascii.end()))
            continue;
        if (!value || Heap::shared().typeOf(value) != Heap::typeId<Number>())
            return std::nullopt;
        const auto& stored = Heap::shared().find<Number>(value)->value;
        if (const auto* integer = std::get_if<std::int64_t>(&stored))
            return static_cast<double>(*integer);
        return std::get<double>(stored);
    }
    return std::nullopt;
}

} // namespace

} // namespace orrivane::fakes

using namespace orrivane::fakes;

const CFStringRef kCGWindowLayer = Heap::shared().constant("kCGWindowLayer");
const CFStringRef kCGWindowNumber = Heap::shared().constant("kCGWindowNumber");
const CFStringRef kCGWindowBounds = Heap::shared().constant("kCGWindowBounds");
const CFStringRef kCGWindowOwnerPID = Heap::shared().constant("kCGWindowOwnerPID");
const CFStringRef kCGWindowOwnerName = Heap::shared().constant("kCGWindowOwnerName");
const CFStringRef kCGWindowIsOnscreen = Heap::shared().constant("kCGWindowIsOnscreen");

CFArrayRef CGWindowListCopyWindowInfo(CGWindowListOption option, CGWindowID relativeTo) {
    if (relativeTo != kCGNullWindowID)
        Heap::shared().note("a window list relative to a window is not faked");
    const auto& server = WindowServer::shared();
    if (server.isUnreachable)
        return nullptr;
    List listed;
    for (const auto& window : server.windows) {
        if ((option & kCGWindowListOptionOnScreenOnly) != 0 && !window.isOnscreen)
            continue;
        if ((option & kCGWindowListExcludeDesktopElements) != 0 && window.isDesktopElement)
            continue;
        listed.members.push_back(window.entry.get());
    }
    return Heap::shared().make<CFArrayRef>(std::move(listed));
}

bool CGRectMakeWithDictionaryRepresentation(CFDictionaryRef representation, CGRect* rect) {
    if (!representation || !rect) {
        Heap::shared().note("a rectangle of null");
        return false;
    }
    std::array<double, 4> numbers{};
    constexpr std::array keys{"X", "Y", "Width", "Height"};
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const auto found = number(representation, keys[i]);
        if (!found)
            return false;
        numbers[i] = *found;
    }
    *rect = {{numbers[0], numbers[1]}, {numbers[2], numbers[3]}};
    return true;
}
