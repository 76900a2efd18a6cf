#include "NotchedDesktop.h"
#include "WaitFor.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>

#include <xcb/randr.h>

namespace orrivane::e2e {
namespace {

using std::chrono::seconds;

TEST(Session, isReadyWhenEveryItemIsDocked) {
    NotchedDesktop desktop({"--items", "battery,twins,nameless"});
    EXPECT_EQ(desktop.icons().size(), 4U);
    EXPECT_EQ(desktop.processesOf("ControlCenter").size(), 1U);
    EXPECT_EQ(desktop.processesOf("orrivane-window").size(), 2U);
}

TEST(Session, aBarThatIsKilledComesBackWithEveryItemInItsOldOrder) {
    NotchedDesktop desktop({"--items", "battery,wifi,volume", "--no-windows"});
    const auto names = [&] {
        std::vector<std::string> result;
        for (const auto& icon : desktop.icons())
            result.push_back(icon.instanceName);
        return result;
    };
    const auto before = names();
    ASSERT_EQ(before.size(), 3U);
    const auto bar = desktop.processesOf("ControlCenter").at(0);
    kill(bar, SIGKILL);
    EXPECT_TRUE(waitFor("another bar with all items", [&] {
        const auto bars = desktop.processesOf("ControlCenter");
        return bars.size() == 1 && bars[0] != bar && names() == before;
    }));
}

TEST(Session, anItemThatIsKilledComesBack) {
    NotchedDesktop desktop({"--items", "battery", "--no-windows"});
    const auto item = desktop.processesOf("orrivane-status-item").at(0);
    kill(item, SIGKILL);
    EXPECT_TRUE(waitFor("it is back", [&] {
        const auto now = desktop.processesOf("orrivane-status-item");
        return now.size() == 1 && now[0] != item && desktop.icons().size() == 1;
    }));
}

TEST(Session, whatCannotStayIsGivenUpWithASentence) {
    NotchedDesktop desktop({"--items", "battery", "--no-windows"});
    for (int i = 0; i < 5; ++i) {
        ASSERT_TRUE(waitFor("it runs",
                            [&] { return !desktop.processesOf("orrivane-status-item").empty(); }));
        const auto item = desktop.processesOf("orrivane-status-item").at(0);
        kill(item, SIGKILL);
        ASSERT_TRUE(waitFor("it is gone", [&] {
            const auto now = desktop.processesOf("orrivane-status-item");
            return now.empty() || now[0] != item;
        }));
    }
    EXPECT_TRUE(waitFor("it is said", [&] {
        return desktop.session().log().find("battery cannot stay and is given up") !=
               std::string::npos;
    }));
    EXPECT_TRUE(desktop.session().isRunning());
}

TEST(Session, nothingIsLeftAfterASignal) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        NotchedDesktop desktop({"--items", "battery,wifi"});
        auto below = descendants(desktop.session().pid());
        ASSERT_GT(below.size(), 5U);
        kill(desktop.session().pid(), signal);
        const auto status = desktop.session().wait(seconds(10));
        ASSERT_TRUE(status);
        EXPECT_EQ(status->code, 0);
        for (const pid_t process : below)
            EXPECT_NE(kill(process, 0), 0) << "process " << process << " is left";
    }
}

TEST(Session, nothingIsLeftAfterItsOwnViolentEnd) {
    NotchedDesktop desktop({"--items", "battery,wifi"});
    const auto below = descendants(desktop.session().pid());
    desktop.session().kill();
    EXPECT_TRUE(waitFor("all are gone", [&] {
        return std::ranges::none_of(below, [](pid_t process) {
            // A zombie that nobody has reaped yet runs no more.
            const auto stat = readFile("/proc/" + std::to_string(process) + "/stat");
            const auto end = stat.rfind(')');
            return end != std::string::npos && stat.compare(end, 3, ") Z") != 0;
        });
    }));
}

TEST(Session, theServersEndIsTheSessions) {
    NotchedDesktop desktop({"--items", "none", "--no-windows"});
    kill(desktop.processesOf("Xvfb").at(0), SIGKILL);
    const auto status = desktop.session().wait(seconds(10));
    ASSERT_TRUE(status);
    EXPECT_EQ(status->code, 1);
}

TEST(Session, aProgramInsideEndsItWithItsOwnStatus) {
    TempDirectory folder;
    ChildProcess::Options options;
    options.arguments = {NotchedDesktop::sessionPath(),
                         "--headless",
                         "--items",
                         "none",
                         "--no-windows",
                         "--",
                         "sh",
                         "-c",
                         "test -n \"$DISPLAY\" && test -n \"$DBUS_SESSION_BUS_ADDRESS\" && exit 7"};
    options.environment = {{"PATH", "/usr/bin:/bin"}};
    options.logFile = folder.path() + "/log";
    ChildProcess session(std::move(options));
    const auto status = session.wait(seconds(30));
    ASSERT_TRUE(status);
    EXPECT_EQ(status->code, 7) << session.log();
}

TEST(Session, theNotchStandsWhereThePanelHasIt) {
    NotchedDesktop desktop({"--panel", "16", "--items", "none", "--no-windows"});
    ASSERT_EQ(desktop.observer().cutouts().size(), 1U);
    EXPECT_EQ(desktop.observer().cutouts()[0], (PixelRect{771, 0, 185, 37}));
    EXPECT_EQ(desktop.observer().rootArea(), (PixelRect{0, 0, 1728, 1117}));
}

TEST(Session, aSecondScreenStandsRightOfTheFirst) {
    NotchedDesktop desktop({"--items", "none", "--no-windows", "--screens", "2"});
    auto* raw = desktop.observer().connection();
    auto* reply = xcb_randr_get_monitors_reply(
        raw, xcb_randr_get_monitors(raw, desktop.observer().root(), 1), nullptr);
    ASSERT_NE(reply, nullptr);
    std::vector<PixelRect> monitors;
    for (auto each = xcb_randr_get_monitors_monitors_iterator(reply); each.rem > 0;
         xcb_randr_monitor_info_next(&each))
        monitors.push_back({each.data->x, each.data->y, each.data->width, each.data->height});
    std::free(reply);
    EXPECT_EQ(monitors, (std::vector<PixelRect>{{0, 0, 1512, 982}, {1512, 0, 1280, 800}}));
}

TEST(Session, aPassingDesktopLeavesNoFolder) {
    TempDirectory folder;
    ChildProcess::Options options;
    options.arguments = {
        NotchedDesktop::sessionPath(), "--headless", "--items", "battery", "--", "true"};
    options.environment = {{"PATH", "/usr/bin:/bin"}, {"TMPDIR", folder.path()}};
    options.logFile = folder.path() + "/log";
    ChildProcess session(std::move(options));
    ASSERT_TRUE(session.wait(seconds(30)));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1);
}

} // namespace
} // namespace orrivane::e2e
