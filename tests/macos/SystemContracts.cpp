#include <macos/system/AXAccessibility.h>
#include <macos/system/CFGlobalPreferences.h>
#include <macos/system/CGEventPoster.h>
#include <macos/system/QuartzWindowList.h>
#include <tests/macos/fakes/AccessibilityServer.h>
#include <tests/macos/fakes/EventSystem.h>
#include <tests/macos/fakes/PreferenceStore.h>
#include <tests/macos/fakes/Session.h>
#include <tests/macos/fakes/WindowServer.h>
#include <tests/support/contracts/AccessibilityContract.h>
#include <tests/support/contracts/EventPosterContract.h>
#include <tests/support/contracts/GlobalPreferencesContract.h>
#include <tests/support/contracts/WindowListContract.h>

namespace orrivane {
namespace {

/// The faked system answers at once: nothing is to be waited for.
struct MacWorld {
    fakes::Session session;

    template <typename Predicate>
    bool pumpUntil(Predicate holds) {
        return holds();
    }
};

struct WindowListWorld : MacWorld {
    QuartzWindowList body;
    fakes::WindowServer& server = fakes::WindowServer::shared();
    std::map<std::uint32_t, Rect> frames;

    WindowList& list() { return body; }
    std::uint32_t addStatusItem() { return add(25, {{1480 - 40.0 * count(), 0}, {30, 24}}); }
    std::uint32_t addOrdinaryWindow() { return add(0, {{100, 100}, {400, 300}}); }
    Rect frameOf(std::uint32_t number) { return frames.at(number); }
    bool hide(std::uint32_t number) {
        auto& window = server.windows.at(indexOf(number));
        window = {entry(25, number, false), false};
        return true;
    }
    void remove(std::uint32_t number) {
        server.windows.at(indexOf(number)) = {fakes::Any(), false};
    }

  private:
    [[nodiscard]] std::uint32_t count() const {
        return static_cast<std::uint32_t>(server.windows.size());
    }
    static std::size_t indexOf(std::uint32_t number) { return number - 1; }
    fakes::Any entry(std::int64_t layer, std::uint32_t number, bool isOnscreen) {
        const auto& frame = frames.at(number);
        return fakes::windowEntry(
            layer, number,
            fakes::rectTable(frame.minX(), frame.minY(), frame.width(), frame.height()),
            isOnscreen);
    }
    std::uint32_t add(std::int64_t layer, const Rect& frame) {
        const auto number = count() + 1;
        frames[number] = frame;
        server.windows.push_back({entry(layer, number, true)});
        return number;
    }
};
INSTANTIATE_TYPED_TEST_SUITE_P(MacOS, WindowListContract, WindowListWorld);

struct AccessibilityWorld : MacWorld {
    fakes::AccessibilityServer& server = fakes::AccessibilityServer::shared();
    std::vector<RunningApplication> running;
    std::int32_t front = 0;
    std::map<std::int32_t, int> pressed;
    AXAccessibility body{{[this] { return running; }, [this] { return frontmost(); },
                          [this] { return frontmost(); }}};

    Accessibility& accessibility() { return body; }
    std::int32_t launch(const std::string& name) {
        const auto pid = static_cast<std::int32_t>(500 + running.size());
        const auto application = server.launch(pid);
        const auto bar = server.makeNode(pid);
        const auto item = server.makeNode(pid);
        const Rect frame = itemFrame(pid);
        item->attributes["AXFrame"] =
            fakes::gives(fakes::rect(frame.minX(), frame.minY(), frame.width(), frame.height()));
        item->actions["AXPress"] = [this, pid] {
            ++pressed[pid];
            return kAXErrorSuccess;
        };
        bar->attributes["AXChildren"] = fakes::givesElements({item});
        application->attributes["AXExtrasMenuBar"] = [bar](CFTypeRef* value) {
            *value = fakes::elementHandle(bar).detach();
            return kAXErrorSuccess;
        };
        running.push_back({pid, name, "org.example." + name});
        return pid;
    }
    void quit(std::int32_t pid) {
        server.processes.erase(pid);
        std::erase_if(running, [pid](const auto& one) { return one.processIdentifier == pid; });
    }
    bool hang(std::int32_t pid) {
        server.processes.at(pid).hangs = true;
        return true;
    }
    int presses(std::int32_t pid) { return pressed[pid]; }
    static Rect itemFrame(std::int32_t pid) { return {{40.0 * (pid - 480), 0}, {30, 24}}; }
    bool makeFrontmost(std::int32_t pid) {
        front = pid;
        return true;
    }
    bool setTrusted(bool isTrusted) {
        server.isTrusted = isTrusted;
        return true;
    }
    [[nodiscard]] double elapsed() const { return server.now; }

  private:
    [[nodiscard]] std::optional<RunningApplication> frontmost() const {
        const auto found =
            std::ranges::find(running, front, &RunningApplication::processIdentifier);
        return found == running.end() ? std::nullopt : std::optional(*found);
    }
};
INSTANTIATE_TYPED_TEST_SUITE_P(MacOS, AccessibilityContract, AccessibilityWorld);

struct EventPosterWorld : MacWorld {
    static constexpr bool sourcesLetGo = false;
    CGEventPoster body;

    EventPoster& poster() { return body; }
    static std::vector<ArrivedEvent> arrived() {
        std::vector<ArrivedEvent> events;
        for (const auto& event : fakes::EventSystem::shared().arrived)
            events.push_back({static_cast<MouseEventType>(event.type),
                              {event.position.x, event.position.y},
                              (event.flags & 0x100000) != 0});
        return events;
    }
    static bool isHeld() { return fakes::EventSystem::shared().isButtonHeld; }
};
INSTANTIATE_TYPED_TEST_SUITE_P(MacOS, EventPosterContract, EventPosterWorld);

struct GlobalPreferencesWorld : MacWorld {
    fakes::PreferenceStore& store = fakes::PreferenceStore::shared();
    std::optional<CFGlobalPreferences> body{std::in_place};

    GlobalPreferences& preferences() { return *body; }
    void reopen() {
        store.values = store.written;
        body.emplace();
    }
    bool storeText(std::string_view key) {
        store.values[std::string(key)] = fakes::text("wide");
        return true;
    }
    bool makeUnwritable() {
        store.isWritable = false;
        return true;
    }
};
INSTANTIATE_TYPED_TEST_SUITE_P(MacOS, GlobalPreferencesContract, GlobalPreferencesWorld);

} // namespace
} // namespace orrivane
