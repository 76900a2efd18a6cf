#include "ScriptedWorld.h"

#include <tests/support/ScriptedMainWindow.h>
#include <tests/support/ScriptedPopover.h>
#include <tests/support/ScriptedStatusBar.h>
#include <tests/support/ScriptedTrayPanel.h>
#include <tests/support/contracts/MainWindowContract.h>
#include <tests/support/contracts/PopoverContract.h>
#include <tests/support/contracts/StatusBarContract.h>
#include <tests/support/contracts/TrayPanelContract.h>

#include <algorithm>

namespace orrivane {
namespace {

struct StatusBarWorld : ScriptedWorld {
    ScriptedStatusBar body{journal};

    StatusBar& statusBar() { return body; }
    [[nodiscard]] int itemCount() const {
        return static_cast<int>(
            std::ranges::count_if(body.items, [](const auto& item) { return !item->removed; }));
    }
    bool click() {
        body.click(body.items.size() - 1);
        return true;
    }
    [[nodiscard]] std::string title() const { return body.items.back()->title; }
    [[nodiscard]] std::optional<std::string> toolTip() const { return body.items.back()->toolTip; }
};
INSTANTIATE_TYPED_TEST_SUITE_P(Scripted, StatusBarContract, StatusBarWorld);

struct PopoverWorld : ScriptedWorld {
    ScriptedPopover body{journal};
    ScriptedStatusBar bar{journal};
    std::unique_ptr<StatusItem> inBar = bar.createItem(-1);

    Popover& popover() { return body; }
    StatusItem& item() { return *inBar; }
    [[nodiscard]] static View root() { return {}; }
    [[nodiscard]] Size contentSize() const { return body.contentSize; }
    bool clickElsewhere() {
        body.clickOutside();
        return true;
    }
};
INSTANTIATE_TYPED_TEST_SUITE_P(Scripted, PopoverContract, PopoverWorld);

struct MainWindowWorld : ScriptedWorld {
    ScriptedMainWindow body{journal};

    MainWindow& window() { return body; }
    [[nodiscard]] static View root() { return {}; }
    bool closeByUser() {
        body.close();
        return true;
    }
};
INSTANTIATE_TYPED_TEST_SUITE_P(Scripted, MainWindowContract, MainWindowWorld);

struct TrayPanelWorld : ScriptedWorld {
    ScriptedTrayPanel body{journal};

    TrayPanel& panel() { return body; }
    [[nodiscard]] bool isVisible() const { return body.visible; }
    [[nodiscard]] Rect frame() const { return body.frame; }
    void click(Point point) const {
        double left = 0;
        for (const auto& button : body.buttons()) {
            const double right = left + button.label.size.width;
            if (point.x >= left && point.x < right && button.action.run)
                button.action.run();
            left = right;
        }
    }
    [[nodiscard]] static bool hasFocus() { return false; }
};
INSTANTIATE_TYPED_TEST_SUITE_P(Scripted, TrayPanelContract, TrayPanelWorld);

} // namespace
} // namespace orrivane
