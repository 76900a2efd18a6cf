#include "support/Desk.h"
#include "support/TrayProcess.h"

#include <Orrivane/IconIdentity.h>

#include <unistd.h>

namespace orrivane::x11 {
namespace {

/// Which process an icon belongs to and what it is called.
class OwnersTest : public Desk {
  protected:
    std::vector<IconOwner> owners() {
        settle();
        return IconIdentity::resolveOwners(port().accessibility);
    }
    IconOwner only() {
        const auto all = owners();
        EXPECT_EQ(all.size(), 1U);
        return all.empty() ? IconOwner{AccessibilityElement(nullptr), {}, 0, {}} : all.front();
    }
    TrayProcess& launch(const std::string& name, int x) {
        auto& process = *processes.emplace_back(
            std::make_unique<TrayProcess>(server.display(), directory.path(), name));
        tray->embed(process.icon(), tray->addSocket({x, 2, 24, 22}));
        return process;
    }
    static std::string nameOf(pid_t process) {
        auto name = e2e::readFile("/proc/" + std::to_string(process) + "/comm");
        name.pop_back();
        return name;
    }

    std::vector<std::unique_ptr<TrayProcess>> processes;
};

TEST_F(OwnersTest, theProcessIsTheOneBehindTheConnection) {
    startTray();
    const auto& process = launch("mixer", 1400);
    EXPECT_EQ(only().pid, process.pid());
}

TEST_F(OwnersTest, everyListedWindowHasItsOwner) {
    startTray();
    const auto& process = launch("Mixer", 1400);
    settle();
    const auto owned = port().windowList.ownedWindows();
    const auto all = port().windowList.allWindows();
    ASSERT_EQ(owned.size(), all.size());
    ASSERT_GE(owned.size(), 2U);
    for (std::size_t i = 0; i < all.size(); ++i)
        EXPECT_EQ(owned[i].window, all[i]);
    EXPECT_EQ(owned[0].window.number, process.icon());
    EXPECT_EQ(owned[0].process, process.pid());
    EXPECT_EQ(owned[0].owner, "Mixer");
    EXPECT_EQ(owned.back().process, getpid()); // the tray's
}

TEST_F(OwnersTest, aFalseClaimOfAProcessIsNotBelieved) {
    startTray();
    const auto& process = launch("mixer", 1400);
    app.setNumbers(process.icon(), "_NET_WM_PID", {1});
    EXPECT_EQ(only().pid, process.pid());
}

TEST_F(OwnersTest, theNameIsTheWindowsClass) {
    startTray();
    launch("Mixer", 1400);
    EXPECT_EQ(only().appName, "Mixer");
}

TEST_F(OwnersTest, theClassCountsNotTheInstance) {
    startTray();
    const auto icon = addIcon({1400, 2, 24, 22});
    app.setText(icon, "WM_CLASS", std::string("instance\0Class", 14));
    EXPECT_EQ(only().appName, "Class");
}

TEST_F(OwnersTest, withoutAClassTheNameIsTheProcesss) {
    startTray();
    const auto& process = launch("", 1400);
    EXPECT_EQ(only().appName, nameOf(process.pid()));
}

TEST_F(OwnersTest, anEmptyOrUnfinishedClassCountsAsNone) {
    startTray();
    const auto icon = addIcon({1400, 2, 24, 22});
    for (const auto& text : {std::string(), std::string("\0\0", 2), std::string("instance"),
                             std::string("instance\0", 9), std::string("instance\0\0", 10)}) {
        app.setText(icon, "WM_CLASS", text);
        app.unmap(icon); // a name is asked for once a docking
        EXPECT_TRUE(owners().empty());
        app.map(icon);
        EXPECT_EQ(only().appName, nameOf(getpid())) << text.size();
    }
}

TEST_F(OwnersTest, twoIconsOfOneProcessHaveOneOwnerAndFramesOfTheirOwn) {
    startTray();
    addIcon({1400, 2, 24, 22});
    addIcon({1360, 2, 30, 22});
    const auto all = owners();
    ASSERT_EQ(all.size(), 2U);
    EXPECT_EQ(all[0].pid, all[1].pid);
    EXPECT_EQ(all[0].frame, (Rect{{1400, 0}, {24, 28}}));
    EXPECT_EQ(all[1].frame, (Rect{{1360, 0}, {30, 28}}));
    EXPECT_EQ(port().accessibility.runningApplications().size(), 1U);
}

TEST_F(OwnersTest, theOwnersFrameIsTheItemsOwnSoEveryItemFindsItsOwner) {
    scale = 1.5;
    setCutout({656, 0, 200, 55});
    startTray({0, 0, 1512, 55});
    launch("first", 1401);
    launch("second", 1300);
    const auto all = owners();
    const auto census = WindowCensus::take(port().screens, port().windowList);
    ASSERT_EQ(all.size(), 2U);
    ASSERT_EQ(census.items.size(), 2U);
    for (const auto& item : census.items) {
        const auto found = IconIdentity::owner(item, all, port().screens.screens());
        ASSERT_TRUE(found);
        EXPECT_EQ(found->frame, item.frame);
    }
}

TEST_F(OwnersTest, eachIconIsAskedForOnce) {
    startTray();
    addIcon({1400, 2, 24, 22});
    ASSERT_EQ(owners().size(), 1U);
    const auto before = requestsSent();
    EXPECT_EQ(IconIdentity::resolveOwners(port().accessibility).size(), 1U);
    EXPECT_EQ(requestsSent(), before + 1);
}

TEST_F(OwnersTest, aNewWindowOfAnOldIdIsAskedForAgain) {
    startTray();
    const auto icon = addIcon({1400, 2, 24, 22});
    ASSERT_EQ(only().appName, "Fake Icon");
    app.destroy(icon);
    app.createAs(icon, {});
    app.setXembedInfo(icon);
    app.setText(icon, "WM_CLASS", std::string("other\0Other\0", 12));
    tray->embed(icon, tray->addSocket({1300, 2, 24, 22}));
    EXPECT_EQ(only().appName, "Other");
}

} // namespace
} // namespace orrivane::x11
