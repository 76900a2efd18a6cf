#include "support/Desk.h"

#include <linux/x11/SingleInstance.h>
#include <linux/x11/TrayProperties.h>

#include <unistd.h>

namespace orrivane::x11 {
namespace {

class SingleInstanceTest : public Desk {
  protected:
    SingleInstanceTest() {
        std::string problem;
        elsewhere = Connection::open(server.display().c_str(), problem);
    }
    std::function<void(InstanceCommand)> heard() {
        return [this](InstanceCommand command) { commands.push_back(command); };
    }
    bool hears(std::size_t count) {
        return eventually([&] { return commands.size() >= count; });
    }

    std::unique_ptr<Connection> elsewhere;
    std::vector<InstanceCommand> commands;
};

TEST_F(SingleInstanceTest, theSecondFindsTheFirstAndTellsIt) {
    SingleInstance first(open(), loop);
    SingleInstance second(*elsewhere, loop);
    EXPECT_EQ(second.runningElsewhere(), std::nullopt);
    EXPECT_TRUE(first.claim(heard()));
    EXPECT_EQ(first.runningElsewhere(), std::nullopt);
    EXPECT_EQ(second.runningElsewhere(), getpid());
    EXPECT_FALSE(second.claim({}));
    EXPECT_TRUE(second.tell(InstanceCommand::open));
    EXPECT_TRUE(second.tell(InstanceCommand::quit));
    ASSERT_TRUE(hears(2));
    EXPECT_EQ(commands,
              (std::vector<InstanceCommand>{InstanceCommand::open, InstanceCommand::quit}));
}

TEST_F(SingleInstanceTest, commandsWaitForTheLoop) {
    std::optional<SingleInstance> first(std::in_place, open(), loop);
    ASSERT_TRUE(first->claim(heard()));
    SingleInstance second(*elsewhere, loop);
    ASSERT_TRUE(second.tell(InstanceCommand::open));
    settle();
    open().drain();
    EXPECT_TRUE(commands.empty()) << "a read is no moment to obey";
    loop.runUntilIdle();
    EXPECT_EQ(commands, std::vector<InstanceCommand>{InstanceCommand::open});
    ASSERT_TRUE(second.tell(InstanceCommand::open));
    settle();
    open().drain();
    first.reset();
    loop.runUntilIdle();
    EXPECT_EQ(commands.size(), 1U) << "nobody is left to obey";
}

TEST_F(SingleInstanceTest, whoLosesItsPlaceIsToldToEnd) {
    SingleInstance first(open(), loop);
    ASSERT_TRUE(first.claim(heard()));
    const auto thief = app.create({});
    xcb_set_selection_owner(app.raw(), thief, app.atom("_ORRIVANE_S0"), XCB_CURRENT_TIME);
    app.sync();
    ASSERT_TRUE(hears(1));
    EXPECT_EQ(commands, std::vector<InstanceCommand>{InstanceCommand::quit});
}

TEST_F(SingleInstanceTest, afterTheFirstsEndAnotherTakesItsPlace) {
    std::optional<SingleInstance> first(std::in_place, *elsewhere, loop);
    ASSERT_TRUE(first->claim({}));
    first.reset();
    SingleInstance second(open(), loop);
    EXPECT_FALSE(second.tell(InstanceCommand::open));
    EXPECT_TRUE(second.claim({}));
}

TEST_F(SingleInstanceTest, afterACrashOfTheFirstAnotherTakesItsPlace) {
    SingleInstance first(*elsewhere, loop);
    ASSERT_TRUE(first.claim({}));
    const Owned<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(
        app.raw(), xcb_get_selection_owner(app.raw(), app.atom("_ORRIVANE_S0")), nullptr));
    ASSERT_TRUE(owner && owner->owner != XCB_NONE);
    xcb_kill_client(app.raw(), owner->owner);
    app.sync();
    SingleInstance second(open(), loop);
    EXPECT_TRUE(eventually([&] { return second.claim({}); }));
}

TEST_F(SingleInstanceTest, messagesThatAreNoCommandsAreNotHeard) {
    SingleInstance first(open(), loop);
    ASSERT_TRUE(first.claim(heard()));
    SingleInstance second(*elsewhere, loop);
    EXPECT_TRUE(second.tell(static_cast<InstanceCommand>(77)));
    EXPECT_TRUE(second.tell(InstanceCommand::open));
    ASSERT_TRUE(hears(1));
    EXPECT_EQ(commands, std::vector<InstanceCommand>{InstanceCommand::open});
}

TEST_F(SingleInstanceTest, aStoppedServerMeansNoClaim) {
    SingleInstance first(open(), loop);
    app.grab();
    EXPECT_FALSE(first.claim(heard()));
    EXPECT_FALSE(first.tell(InstanceCommand::open));
    app.ungrab();
}

TEST_F(Desk, theTraysInkIsItsFirstColour) {
    startTray();
    EXPECT_EQ(trayInk(open()), std::nullopt);
    std::vector<std::uint32_t> colors(12, 0);
    colors[0] = 0x1234;
    colors[1] = 0xabcd;
    colors[2] = 0xffff;
    app.setNumbers(tray->owner(), "_NET_SYSTEM_TRAY_COLORS", colors);
    EXPECT_EQ(trayInk(open()), 0x12abffU);
    app.setNumbers(tray->owner(), "_NET_SYSTEM_TRAY_COLORS", {1, 2});
    EXPECT_EQ(trayInk(open()), std::nullopt);
}

TEST_F(Desk, onlyATrayThatPublishesItsSpacingIsAMenuBar) {
    EXPECT_FALSE(trayIsAMenuBar(open()));
    startTray();
    EXPECT_FALSE(trayIsAMenuBar(open()));
    app.setNumbers(tray->owner(), "_ORRIVANE_ITEM_METRICS", {16, 14});
    EXPECT_TRUE(trayIsAMenuBar(open()));
}

} // namespace
} // namespace orrivane::x11
