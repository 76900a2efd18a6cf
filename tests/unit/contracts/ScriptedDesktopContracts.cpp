#include "ScriptedWorld.h"

#include <tests/support/ScriptedAccessibility.h>
#include <tests/support/ScriptedEventPoster.h>
#include <tests/support/ScriptedOwnWindows.h>
#include <tests/support/ScriptedScreenCapture.h>
#include <tests/support/ScriptedScreens.h>
#include <tests/support/ScriptedWindowList.h>
#include <tests/support/contracts/AccessibilityContract.h>
#include <tests/support/contracts/EventPosterContract.h>
#include <tests/support/contracts/OwnWindowsContract.h>
#include <tests/support/contracts/ScreenCaptureContract.h>
#include <tests/support/contracts/ScreensContract.h>
#include <tests/support/contracts/WindowListContract.h>

#include <map>

namespace orrivane {
namespace {

struct ScreensWorld : ScriptedWorld {
    ScriptedScreens body{journal};

    ScreensWorld() { attachTwo(); }
    Screens& screens() { return body; }
    bool attachPlain() {
        body.list = {ScriptedScreens::plain()};
        return true;
    }
    bool attachNotched() {
        body.list = {ScriptedScreens::notched()};
        return true;
    }
    bool attachTwo() {
        body.list = {ScriptedScreens::notched(),
                     ScriptedScreens::plain({{1512, -98}, {1920, 1080}})};
        body.mainIndex = 1;
        return true;
    }
    bool detachAll() {
        body.list.clear();
        return true;
    }
    bool setDisplayAsleep(bool asleep) {
        body.displayIsAsleep = asleep;
        return true;
    }
};
INSTANTIATE_TYPED_TEST_SUITE_P(Scripted, ScreensContract, ScreensWorld);

struct WindowListWorld : ScriptedWorld {
    ScriptedWindowList body{journal};
    std::map<std::uint32_t, Rect> frames;
    std::uint32_t last = 0;

    WindowList& list() { return body; }
    std::uint32_t addStatusItem() {
        const Rect frame{{1000 + 30.0 * ++last, 0}, {24, 37}};
        frames.emplace(last, frame);
        body.add(last, frame);
        return last;
    }
    std::uint32_t addOrdinaryWindow() {
        body.add(++last, {{100, 100}, {640, 480}}, true, 0);
        return last;
    }
    [[nodiscard]] Rect frameOf(std::uint32_t number) const { return frames.at(number); }
    bool hide(std::uint32_t number) {
        body.remove(number);
        body.add(number, frames.at(number), false);
        return true;
    }
    void remove(std::uint32_t number) { body.remove(number); }
};
INSTANTIATE_TYPED_TEST_SUITE_P(Scripted, WindowListContract, WindowListWorld);

struct OwnWindowsWorld : ScriptedWorld {
    ScriptedOwnWindows body{journal};

    OwnWindows& ownWindows() { return body; }
    std::int64_t openMainViewWindow() {
        body.numbers.push_back(71);
        body.mainViewWindowVisible = true;
        return 71;
    }
    void closeMainViewWindow() { body.mainViewWindowVisible = false; }
    std::int64_t openPopover() {
        body.numbers.push_back(72);
        return 72;
    }
    bool openForeignWindow(std::int64_t& number) {
        number = 73;
        return true;
    }
};
INSTANTIATE_TYPED_TEST_SUITE_P(Scripted, OwnWindowsContract, OwnWindowsWorld);

struct AccessibilityWorld : ScriptedWorld {
    ScriptedAccessibility body{journal};
    std::map<std::int32_t, int> pressesOf;
    std::int32_t last = 100;

    static constexpr Rect frame{{1400, 0}, {24, 37}};

    AccessibilityWorld() {
        body.clock = &virtualLoop;
        body.hasSecondaryAction = true;
    }
    Accessibility& accessibility() { return body; }
    std::int32_t launch(const std::string& name) {
        const auto pid = ++last;
        body.addApplication(pid, name);
        const auto item = body.addStatusItem(pid, frame);
        body.setAction(item, "AXPress", 0, [this, pid] { ++pressesOf[pid]; });
        return pid;
    }
    void quit(std::int32_t pid) { body.quit(pid); }
    bool hang(std::int32_t pid) {
        body.hung.insert(pid);
        return true;
    }
    int presses(std::int32_t pid) { return pressesOf[pid]; }
    [[nodiscard]] static Rect itemFrame(std::int32_t) { return frame; }
    bool makeFrontmost(std::int32_t pid) {
        body.frontmost = RunningApplication{pid, "frontmost", std::nullopt};
        return true;
    }
    bool setTrusted(bool trusted) {
        body.trusted = trusted;
        return true;
    }
};
INSTANTIATE_TYPED_TEST_SUITE_P(Scripted, AccessibilityContract, AccessibilityWorld);

template <CaptureReply::Kind kind>
struct ScreenCaptureWorld : ScriptedWorld {
    ScriptedScreenCapture body{virtualLoop, journal};
    std::uint32_t last = 0;

    ScreenCaptureWorld() {
        body.contentReply = {kind, 0.05, false};
        body.captureReply = {kind, 0.05, false};
    }
    ScreenCapture& capture() { return body; }
    std::uint32_t openWindow(Size points) {
        body.addWindow(++last, points);
        return last;
    }
    void closeWindow(std::uint32_t id) { body.removeWindow(id); }
    bool setAccess(bool granted) {
        body.accessGranted = granted;
        return true;
    }
};
using CaptureWorlds = ::testing::Types<ScreenCaptureWorld<CaptureReply::Kind::now>,
                                       ScreenCaptureWorld<CaptureReply::Kind::later>>;
INSTANTIATE_TYPED_TEST_SUITE_P(Scripted, ScreenCaptureContract, CaptureWorlds);

struct EventPosterWorld : ScriptedWorld {
    ScriptedEventPoster body{journal, &virtualLoop};

    EventPoster& poster() { return body; }
    [[nodiscard]] std::vector<ArrivedEvent> arrived() const {
        std::vector<ArrivedEvent> events;
        for (const auto& event : body.posted)
            events.push_back({event.type, event.position,
                              (event.flags & ScriptedEventPoster::commandFlag) != 0});
        return events;
    }
    [[nodiscard]] bool isHeld() const { return body.holdsButton || body.holdsCommand; }
};
INSTANTIATE_TYPED_TEST_SUITE_P(Scripted, EventPosterContract, EventPosterWorld);

} // namespace
} // namespace orrivane
