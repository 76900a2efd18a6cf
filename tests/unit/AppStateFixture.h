#pragma once

#include <Orrivane/AppState.h>

#include <tests/support/CoroutineTest.h>
#include <tests/support/ScriptedShellPlatform.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace orrivane {

/// A notched screen with two items, one of them hidden, and a state that was just made. Tasks run
/// on the loop of `desktop`.
struct AppStateFixture : testing::Test {
    static constexpr std::uint32_t hidden = 11;
    static constexpr std::uint32_t visible = 12;
    static constexpr const char* spacingKey = "NSStatusItemSpacing";
    static constexpr const char* paddingKey = "NSStatusItemSelectionPadding";

    ScriptedPlatform desktop;
    ScriptedShellPlatform shell{desktop};
    CaptureService captures{desktop.screenCapture, desktop.accessibility, desktop.workspace};
    std::shared_ptr<AppState> state;

    AppStateFixture() {
        desktop.screens.list = {ScriptedScreens::notched()};
        addItem(hidden, 700, 30);
        addItem(visible, 900, 40);
        make();
    }

    void make() { state = AppState::create(desktop.platform(), shell.platform(), captures); }
    void addItem(std::uint32_t id, double x, double width) {
        const Rect frame{{x, 0}, {width, 37}};
        desktop.windowList.add(id, frame);
        desktop.screenCapture.addWindow(id, frame.size, frame.origin);
    }
    void moveItem(std::uint32_t id, double x, double width) {
        desktop.windowList.remove(id);
        desktop.windowList.add(id, {{x, 0}, {width, 37}});
    }
    TaskHandle begin(Task<> task) { return start(desktop.loop, std::move(task)); }
    /// Runs the task as far as it comes without time passing.
    void run(Task<> task) {
        begin(std::move(task));
        desktop.loop.runUntilIdle();
    }
    void refresh() { run(state->refresh()); }

    [[nodiscard]] std::size_t captureCount() const { return desktop.screenCapture.captures.size(); }
    /// The windows of every capture so far, in the order of the requests.
    [[nodiscard]] std::vector<std::uint32_t> capturedIDs() const {
        std::vector<std::uint32_t> ids;
        for (const auto& call : desktop.screenCapture.captures)
            ids.push_back(call.windowID);
        return ids;
    }
    /// The calls since the journal was last cleared that begin with one of `prefixes`.
    [[nodiscard]] std::vector<std::string> calls(const std::vector<std::string>& prefixes) const {
        std::vector<std::string> result;
        for (const auto& call : desktop.journal.calls())
            for (const auto& prefix : prefixes)
                if (call.starts_with(prefix)) {
                    result.push_back(call);
                    break;
                }
        return result;
    }
};

using IDs = std::vector<std::uint32_t>;
using Calls = std::vector<std::string>;

} // namespace orrivane
