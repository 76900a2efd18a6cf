#pragma once

#include "ChildProcess.h"
#include "Observer.h"
#include "PrivateXServer.h"
#include "Surroundings.h"
#include "TempDirectory.h"
#include "WaitFor.h"

#include <list>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace orrivane::e2e {

/// A line of `orrivane-status-item --list`.
struct ListedKind {
    std::string id;
    int width = 0; ///< points
    int icons = 0;
    std::string name;
};

/// A screen of its own with a plain tray, for one test.
class ItemsStage : public testing::Test {
  protected:
    static constexpr int barHeight = 37;
    static constexpr int spacing = 16;
    static constexpr std::uint32_t background = 0xf4f5f8;

    ItemsStage();
    ~ItemsStage() override;

    ChildProcess& start(const std::vector<std::string>& arguments);
    ChildProcess& startTray(int height = barHeight, int gap = spacing);
    ChildProcess& startItem(const std::string& kind, std::vector<std::string> options = {});
    /// Waits until so many icons are in the tray and shown; left to right.
    std::vector<WindowState> icons(std::size_t count);
    WindowState icon() { return icons(1).front(); }

    /// Waits for the only popup.
    WindowState menu();
    WindowState openMenu(const WindowState& icon, std::uint8_t button = 1);
    void closeMenu();
    /// Chooses the n-th entry that can be chosen, counted from 1, of the open menu.
    void chooseEntry(int number);

    /// Lines of the record of choices.
    std::vector<std::string> choices() const;
    testing::AssertionResult isLogged(const std::vector<std::string>& lines);
    /// What `orrivane-status-item --list` says.
    std::vector<ListedKind> listedKinds();
    /// A property of bytes; absent when it is not there.
    std::optional<std::string> text(xcb_window_t window, const std::string& property);

    TempDirectory directory_;
    PrivateXServer server_;
    Observer observer_;
    std::list<ChildProcess> processes_;
    int started_ = 0;
};

} // namespace orrivane::e2e
