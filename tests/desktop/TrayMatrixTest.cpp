#include "Desktop.h"
#include "WaitFor.h"

#include <algorithm>
#include <cctype>
#include <tuple>

namespace orrivane::e2e {
namespace {

std::string testName(std::string name) {
    std::erase_if(name, [](unsigned char letter) { return std::isalnum(letter) == 0; });
    return name;
}

std::vector<std::string> hostNames() {
    std::vector<std::string> names;
    for (const TrayHost& host : trayHosts()) {
        names.push_back(host.name);
    }
    return names;
}

std::vector<std::string> clientNames() {
    std::vector<std::string> names;
    for (const TrayClient& client : trayClients()) {
        names.push_back(client.name);
    }
    return names;
}

Desktop::Options with(const std::string& host) {
    Desktop::Options options;
    options.host = host;
    return options;
}

class EveryHostAndClient : public testing::TestWithParam<std::tuple<std::string, std::string>> {
  protected:
    void SetUp() override {
        const auto& [host, client] = GetParam();
        if (const std::string missing = missingPrograms({host, client}); !missing.empty()) {
            GTEST_SKIP() << missing;
        }
    }
};

TEST_P(EveryHostAndClient, docksOpensItsMenuAndLeaves) {
    const auto& [host, name] = GetParam();
    Desktop desktop(with(host));
    DockedClient& client = desktop.startClient(name);
    Observer& observer = desktop.observer();

    const auto icon = observer.window(client.icon);
    ASSERT_TRUE(icon);
    EXPECT_EQ(icon->className, client.kind->className);
    EXPECT_GE(icon->area.width, 16);
    EXPECT_LE(icon->area.width, 40);
    EXPECT_GE(icon->area.height, 16);
    EXPECT_LE(icon->area.height, 40);
    const auto dock = observer.dockOf(client.icon);
    ASSERT_TRUE(dock);
    EXPECT_TRUE(dock->area.contains(icon->area)) << dock->area << " " << icon->area;
    EXPECT_EQ(observer.leafAt(icon->area.centre()), client.icon);
    EXPECT_TRUE(desktop.popupsOf(client.icon).empty());

    const WindowState menu = desktop.openMenu(client);
    EXPECT_GT(menu.area.width, 40) << menu.area;
    EXPECT_GT(menu.area.height, 30) << menu.area;
    EXPECT_EQ(observer.pidOf(menu.id), client.process.pid());
    desktop.closeMenu(menu);

    client.process.kill();
    EXPECT_TRUE(
        waitFor("the icon goes with its process", [&] { return observer.trayIcons().empty(); }));
}

INSTANTIATE_TEST_SUITE_P(Tray, EveryHostAndClient,
                         testing::Combine(testing::ValuesIn(hostNames()),
                                          testing::ValuesIn(clientNames())),
                         [](const auto& instance) {
                             return testName(std::get<0>(instance.param)) + "_" +
                                    testName(std::get<1>(instance.param));
                         });

class EveryHost : public testing::TestWithParam<std::string> {
  protected:
    void SetUp() override {
        const std::string missing =
            missingPrograms({GetParam(), "parcellite", "xfce4-clipman", "volumeicon", "nm-tray"});
        if (!missing.empty()) {
            GTEST_SKIP() << missing;
        }
    }
};

TEST_P(EveryHost, packsFourIconsWithRoomLeftOfThem) {
    Desktop desktop(with(GetParam()));
    for (const char* name : {"parcellite", "xfce4-clipman", "volumeicon", "nm-tray"}) {
        desktop.startClient(name);
    }
    const std::vector<WindowState> icons = desktop.settledIcons();
    ASSERT_EQ(icons.size(), 4u);
    for (std::size_t i = 1; i < icons.size(); ++i) {
        const int gap = icons[i].area.x - icons[i - 1].area.right();
        EXPECT_GE(gap, 0);
        EXPECT_LE(gap, 30) << icons[i - 1].area << " " << icons[i].area;
    }
    EXPECT_GT(icons.front().area.x, 400);
    if (desktop.hostKind().obeysTrayRight) {
        EXPECT_NEAR(icons.back().area.right(), desktop.options().trayRight, 24);
    }
    const PixelRect cutout = desktop.cutOutIcons(1, 2);
    EXPECT_FALSE(cutout.intersects(icons[0].area));
    EXPECT_TRUE(cutout.contains(icons[1].area) && cutout.contains(icons[2].area));
    EXPECT_FALSE(cutout.intersects(icons[3].area));
}

INSTANTIATE_TEST_SUITE_P(Tray, EveryHost, testing::ValuesIn(hostNames()),
                         [](const auto& instance) { return testName(instance.param); });

class EveryStatusNotifierClient : public testing::TestWithParam<std::string> {};

TEST_P(EveryStatusNotifierClient, hasNoWindowInATrayWithAWatcher) {
    const TrayClient& kind = trayClient(GetParam());
    const std::string host = "xfce4-panel";
    if (const std::string missing = missingPrograms({host, kind.name, "dbus-send"});
        !missing.empty()) {
        GTEST_SKIP() << missing;
    }
    Desktop desktop(with(host));
    const Environment surroundings = desktop.environment("client");
    ChildProcess client = kind.start(surroundings, desktop.directory() + "/client.log");
    const auto registered = [&] {
        ChildProcess& query = desktop.start(
            {"dbus-send", "--session", "--print-reply", "--dest=org.kde.StatusNotifierWatcher",
             "/StatusNotifierWatcher", "org.freedesktop.DBus.Properties.Get",
             "string:org.kde.StatusNotifierWatcher", "string:RegisteredStatusNotifierItems"},
            surroundings);
        query.wait(defaultBound);
        return query.log().find("string \"") != std::string::npos;
    };
    EXPECT_TRUE(waitFor(kind.name + " registers with the watcher", registered));
    EXPECT_TRUE(desktop.foreignIcons().empty());
}

std::vector<std::string> statusNotifierClients() {
    std::vector<std::string> names;
    for (const TrayClient& client : trayClients()) {
        if (client.prefersStatusNotifier) {
            names.push_back(client.name);
        }
    }
    return names;
}

INSTANTIATE_TEST_SUITE_P(Tray, EveryStatusNotifierClient,
                         testing::ValuesIn(statusNotifierClients()),
                         [](const auto& instance) { return testName(instance.param); });

} // namespace
} // namespace orrivane::e2e
