#pragma once

#include <Orrivane/AppDelegate.h>
#include <Orrivane/CaptureService.h>
#include <Orrivane/NotificationName.h>
#include <Orrivane/StripController.h>
#include <Orrivane/UpdateController.h>

#include <tests/support/ScriptedShellPlatform.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace orrivane {

/// A delegate on a notched screen whose visible frame is 1512 × 945, not launched yet. The main
/// views are empty values; the journal says when they are made.
struct AppDelegateFixture : testing::Test {
    ScriptedPlatform desktop;
    ScriptedShellPlatform shell{desktop};
    NotificationCenter notifications;
    CaptureService captures{desktop.screenCapture, desktop.accessibility, desktop.workspace};
    StripController strip{desktop.platform(), captures};
    UpdateController updates{shell.updater, desktop.workspace, desktop.loop, notifications};
    std::function<void(bool inWindow)> whenViewIsMade;
    int livingViews = 0;
    std::unique_ptr<AppDelegate> delegate;

    AppDelegateFixture() {
        desktop.screens.list = {ScriptedScreens::notched()};
        make();
        desktop.journal.clear();
    }

    void make() {
        delegate = std::make_unique<AppDelegate>(
            desktop.platform(), shell.platform(),
            AppDelegate::Services{captures, strip, updates, notifications},
            [this](bool inWindow, const std::function<void(const View&)>& setRoot) {
                return makeView(inWindow, setRoot);
            });
    }
    std::shared_ptr<void> makeView(bool inWindow, const std::function<void(const View&)>& setRoot) {
        desktop.journal.note(inWindow ? "window's main view" : "popover's main view");
        if (whenViewIsMade)
            whenViewIsMade(inWindow);
        View root;
        root.tooltip = inWindow ? "in window" : "in popover";
        setRoot(root);
        ++livingViews;
        return std::shared_ptr<void>(nullptr, [this](void*) { --livingViews; });
    }

    void launch() { delegate->applicationDidFinishLaunching(); }
    void post(std::string_view name, const UserInfo& userInfo = {}) {
        notifications.post(name, userInfo);
    }
    void showStatusItem(bool shown) {
        desktop.userDefaults.setBool(AppDelegate::showStatusItemKey, shown);
        post(NotificationName::orrivaneStatusItemChanged);
    }
    void announceUpdate(const std::string& version) {
        updates.willHandleShowingUpdate(false, version);
    }

    [[nodiscard]] std::size_t itemCount() const { return shell.statusBar.items.size(); }
    [[nodiscard]] const ScriptedStatusBar::Item& item() const {
        return *shell.statusBar.items.back();
    }
    [[nodiscard]] double contentHeight() {
        return shell.mainWindow.contentRect(shell.mainWindow.currentFrame).height();
    }
};

using Calls = std::vector<std::string>;

} // namespace orrivane
