#pragma once

#include <Orrivane/CaptureService.h>
#include <Orrivane/StripController.h>

#include <tests/support/ScriptedPlatform.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace orrivane {

/// A notched screen (notch from 660 to 850), two hidden items of two applications, an application
/// in front whose menus are 200 points wide, and a controller that has not been started.
struct StripFixture : testing::Test {
    static constexpr std::uint32_t left = 11;
    static constexpr std::uint32_t right = 12;
    static constexpr std::int32_t frontmost = 100;

    ScriptedPlatform world;
    CaptureService captures{world.screenCapture, world.accessibility, world.workspace};
    std::unique_ptr<StripController> controller;

    StripFixture() {
        world.screens.list = {ScriptedScreens::notched()};
        world.accessibility.addApplication(frontmost, "Editor");
        world.accessibility.menuBarOwner = world.accessibility.running[0];
        setMenuWidth(200);
        addItem(left, 700, 30, 1, "Left");
        addItem(right, 740, 40, 2, "Right");
        controller = std::make_unique<StripController>(world.platform(), captures);
    }

    /// A hidden or visible item with its owner and something to capture.
    AccessibilityElement addItem(std::uint32_t id, double x, double width, std::int32_t pid,
                                 const std::string& name) {
        const Rect frame{{x, 0}, {width, 37}};
        world.windowList.add(id, frame);
        world.screenCapture.addWindow(id, frame.size, frame.origin);
        world.accessibility.addApplication(pid, name);
        auto element = world.accessibility.addStatusItem(pid, frame);
        elements.insert_or_assign(id, element);
        return element;
    }
    void setMenuWidth(double width) {
        world.accessibility.setMenuBar(frontmost, Rect{{0, 0}, {1512, 24}},
                                       {Rect{{0, 0}, {width, 24}}});
    }
    void start() {
        controller->start();
        world.loop.runUntilIdle();
    }
    void advance(double seconds) { world.loop.advance(seconds); }
    void post(SystemNotification notification) {
        world.workspace.post(notification);
        world.loop.runUntilIdle();
    }
    void setDefault(std::string_view key, bool value) { world.userDefaults.setBool(key, value); }

    [[nodiscard]] bool shown() const { return world.trayPanel.visible; }
    /// The keys of the shown row, left to right; empty while hidden.
    [[nodiscard]] std::vector<std::uint32_t> row() const {
        std::vector<std::uint32_t> keys;
        if (shown())
            for (const auto& cell : std::get<HorizontalStack>(world.trayPanel.root->node).children)
                keys.push_back(cell.key);
        return keys;
    }
    [[nodiscard]] std::vector<std::string> names() const {
        std::vector<std::string> result;
        for (const auto& cell : std::get<HorizontalStack>(world.trayPanel.root->node).children)
            result.push_back(cell.tooltip);
        return result;
    }
    /// The interval of the tick timer; 0 while there is none.
    [[nodiscard]] double interval() const {
        for (const auto& timer : world.loop.timers())
            if (timer.repeats)
                return timer.interval;
        return 0;
    }
    [[nodiscard]] std::size_t captureCount() const { return world.screenCapture.captures.size(); }
    /// How often the owners were resolved since the journal of timeouts began, by one application.
    [[nodiscard]] std::size_t ownerWalks() const {
        std::size_t count = 0;
        for (const auto& timeout : world.accessibility.timeouts)
            count += timeout.processIdentifier == 1 ? 1 : 0;
        return count;
    }
    [[nodiscard]] std::size_t menuReads() const {
        std::size_t count = 0;
        for (const auto& timeout : world.accessibility.timeouts)
            count += timeout.processIdentifier == frontmost ? 1 : 0;
        return count - ownerWalks();
    }
    [[nodiscard]] std::size_t presses() const { return world.accessibility.performed.size(); }

    std::map<std::uint32_t, AccessibilityElement> elements;
};

using Row = std::vector<std::uint32_t>;

} // namespace orrivane
