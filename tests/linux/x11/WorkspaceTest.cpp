#include "support/Desk.h"
#include "support/RandR.h"

#include <map>

namespace orrivane::x11 {
namespace {

/// What the system tells.
class WorkspaceTest : public Desk {
  protected:
    void observeAll() {
        for (const auto notification :
             {SystemNotification::didActivateApplication, SystemNotification::willSleep,
              SystemNotification::screensDidSleep, SystemNotification::didWake,
              SystemNotification::screensDidWake, SystemNotification::didChangeScreenParameters})
            observers.push_back(port().workspace.observe(
                notification, [this, notification] { ++told[notification]; }));
    }
    void activate(xcb_window_t window) {
        app.setNumbers(app.root(), "_NET_ACTIVE_WINDOW", {window}, "WINDOW");
    }
    int activations() {
        pump();
        return told[SystemNotification::didActivateApplication];
    }

    std::map<SystemNotification, int> told;
    std::vector<Subscription> observers;
};

TEST_F(WorkspaceTest, aSwitchThroughNoWindowIsToldOnce) {
    observeAll();
    activate(0);
    activate(app.create({}));
    EXPECT_EQ(activations(), 1);
    XClient other(server.display());
    activate(0);
    activate(other.create({}));
    EXPECT_EQ(activations(), 2);
    EXPECT_EQ(told.size(), 1U);
}

TEST_F(WorkspaceTest, noActiveWindowIsNoOtherApplication) {
    observeAll();
    activate(app.create({}));
    ASSERT_EQ(activations(), 1);
    activate(0);
    EXPECT_EQ(activations(), 1);
    app.remove(app.root(), "_NET_ACTIVE_WINDOW");
    EXPECT_EQ(activations(), 1);
    EXPECT_EQ(port().workspace.activeWindow(), 0U);
}

TEST_F(WorkspaceTest, aProgramThatComesBackAfterNoneIsTold) {
    observeAll();
    const auto window = app.create({});
    activate(window);
    ASSERT_EQ(activations(), 1);
    activate(0);
    ASSERT_EQ(activations(), 1);
    activate(window);
    EXPECT_EQ(activations(), 2) << "the bar was the dock's meanwhile";
    activate(0);
    activate(window);
    EXPECT_EQ(activations(), 2) << "within one turn that is no switch";
}

TEST_F(WorkspaceTest, anotherWindowOfTheSameProgramIsNotTold) {
    observeAll();
    activate(app.create({}));
    ASSERT_EQ(activations(), 1);
    const auto second = app.create({});
    activate(second);
    EXPECT_EQ(activations(), 1);
    EXPECT_EQ(port().workspace.activeWindow(), second);
}

TEST_F(WorkspaceTest, theActiveWindowIsAskedForOnceAChange) {
    const auto window = app.create({});
    activate(window);
    settle();
    ASSERT_EQ(port().workspace.activeWindow(), window);
    const auto before = requestsSent();
    EXPECT_EQ(port().workspace.activeWindow(), window);
    EXPECT_EQ(requestsSent(), before + 1);
}

TEST_F(WorkspaceTest, anActiveWindowThatMakesNoSenseIsNone) {
    app.setText(app.root(), "_NET_ACTIVE_WINDOW", "nonsense");
    EXPECT_EQ(port().workspace.activeWindow(), 0U);
    app.setNumbers(app.root(), "_NET_ACTIVE_WINDOW", {}, "WINDOW");
    settle();
    EXPECT_EQ(port().workspace.activeWindow(), 0U);
}

TEST_F(WorkspaceTest, aBurstOfScreenChangesIsToldOnceWhenItIsOver) {
    observeAll();
    const auto changes = [this] { return told[SystemNotification::didChangeScreenParameters]; };
    for (const int width : {400, 500, 600}) {
        setMonitor(app, std::to_string(width), {0, 0, width, 300}, false);
        pump();
        loop.advance(0.15);
        EXPECT_EQ(changes(), 0);
    }
    loop.advance(0.04);
    EXPECT_EQ(changes(), 0);
    loop.advance(0.02);
    EXPECT_EQ(changes(), 1);
    loop.advance(10);
    EXPECT_EQ(changes(), 1);
}

TEST_F(WorkspaceTest, aCutoutAndAWorkAreaAreScreenChangesToo) {
    observeAll();
    setCutout({656, 0, 200, 37});
    pump();
    loop.advance(1);
    EXPECT_EQ(told[SystemNotification::didChangeScreenParameters], 1);
    app.setNumbers(app.root(), "_NET_WORKAREA", {0, 28, 1512, 900});
    pump();
    loop.advance(1);
    EXPECT_EQ(told[SystemNotification::didChangeScreenParameters], 2);
}

TEST_F(WorkspaceTest, otherPropertiesOfTheRootAreNoScreenChange) {
    observeAll();
    app.setNumbers(app.root(), "_NET_CURRENT_DESKTOP", {1});
    pump();
    loop.advance(1);
    EXPECT_TRUE(told.empty());
}

TEST_F(WorkspaceTest, blankScreensSleepAndWake) {
    observeAll();
    setBlank(app, true);
    pump();
    EXPECT_EQ(told[SystemNotification::screensDidSleep], 1);
    EXPECT_EQ(told[SystemNotification::screensDidWake], 0);
    setBlank(app, false);
    pump();
    EXPECT_EQ(told[SystemNotification::screensDidSleep], 1);
    EXPECT_EQ(told[SystemNotification::screensDidWake], 1);
    EXPECT_EQ(told[SystemNotification::willSleep], 0);
}

TEST_F(WorkspaceTest, theMachinesSleepIsToldOnALaterTurn) {
    observeAll();
    port().workspace.machineSleeps(true);
    EXPECT_TRUE(told.empty());
    loop.runUntilIdle();
    EXPECT_EQ(told[SystemNotification::willSleep], 1);
    EXPECT_EQ(told[SystemNotification::didWake], 0);
    port().workspace.machineSleeps(false);
    loop.runUntilIdle();
    EXPECT_EQ(told[SystemNotification::willSleep], 1);
    EXPECT_EQ(told[SystemNotification::didWake], 1);
}

TEST_F(WorkspaceTest, whatWasPostedForAWorkspaceThatIsGoneDoesNothing) {
    int notified = 0;
    {
        X11Screens screens(open(), 1, cutoutFile(), deviceTree);
        X11Workspace workspace(open(), loop, screens, {});
        const auto observer = workspace.observe(SystemNotification::willSleep, [&] { ++notified; });
        workspace.machineSleeps(true);
        setCutout({656, 0, 200, 37});
        activate(app.create({}));
        settle();
        open().drain();
        EXPECT_GT(loop.pendingPosts(), 0U);
        EXPECT_EQ(loop.timerCount(), 1U);
    }
    EXPECT_EQ(loop.timerCount(), 0U);
    loop.advance(10);
    EXPECT_EQ(notified, 0);
}

TEST_F(WorkspaceTest, whatTheToolkitDoesIsHandedToIt) {
    std::vector<std::string> calls;
    toolkit = {[&](std::string_view address) {
                   calls.emplace_back(address);
                   return address.starts_with("https:");
               },
               [&] { calls.emplace_back("terminate"); }, [&] { calls.emplace_back("activate"); }};
    EXPECT_TRUE(port().workspace.open("https://localhost/"));
    EXPECT_FALSE(port().workspace.open("no address"));
    port().workspace.terminate();
    port().workspace.activate();
    EXPECT_EQ(calls, (std::vector<std::string>{"https://localhost/", "no address", "terminate",
                                               "activate"}));
    EXPECT_FALSE(port().workspace.versionStrings().version.empty());
}

} // namespace
} // namespace orrivane::x11
