#include "Desktop.h"
#include "ItemsStage.h"
#include "Kinds.h"

#include <algorithm>
#include <cmath>

namespace orrivane::e2e {
namespace {

using Docking = ItemsStage;

std::string onlyLetters(std::string name) {
    std::erase(name, '-');
    return name;
}

class AtScale : public ItemsStage, public testing::WithParamInterface<double> {};

TEST_P(AtScale, everyKindDocksAtTheWidthItDeclares) {
    const auto pixels = [](double points) {
        return static_cast<int>(std::lround(points * GetParam()));
    };
    const int gap = pixels(spacing);
    startTray(pixels(barHeight), gap);
    for (const auto& kind : listedKinds()) {
        const auto before = observer_.trayIcons();
        const auto count = before.size() + static_cast<std::size_t>(kind.icons);
        startItem(kind.id, {"--scale", std::to_string(GetParam())});
        for (const auto& each : icons(count)) {
            if (std::ranges::find(before, each.id, &WindowState::id) != before.end())
                continue;
            const auto hasItsPlace = [&] {
                const auto now = observer_.window(each.id);
                return now && now->area.width == pixels(kind.width) + gap &&
                       now->area.height == pixels(barHeight);
            };
            EXPECT_TRUE(waitFor("the tray's size for " + kind.id, hasItsPlace));
            EXPECT_TRUE(staysTrue("it keeps it", hasItsPlace, std::chrono::milliseconds(30)));
            const auto hints = observer_.cardinals(each.id, "WM_NORMAL_HINTS");
            ASSERT_TRUE(hints && hints->size() >= 17) << kind.id;
            const auto width = static_cast<std::uint32_t>(pixels(kind.width));
            EXPECT_EQ(hints->at(5), width) << kind.id << ": least width";
            EXPECT_EQ(hints->at(15), width) << kind.id << ": base width";
            EXPECT_NE(hints->at(0) & (1U << 4), 0u) << kind.id;
            EXPECT_NE(hints->at(0) & (1U << 8), 0u) << kind.id;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Docking, AtScale, testing::Values(1, 1.5, 2), [](const auto& instance) {
    return "x" + std::to_string(static_cast<int>(instance.param * 100));
});

class EveryItem : public ItemsStage, public testing::WithParamInterface<ExpectedKind> {};

TEST_P(EveryItem, docksUnderItsNameAndLeavesWithItsProcess) {
    startTray();
    auto& process = startItem(GetParam().id);
    const auto docked = icon();
    EXPECT_EQ(docked.className, GetParam().className);
    EXPECT_EQ(docked.instanceName, GetParam().className.empty() ? "" : GetParam().id);
    EXPECT_EQ(observer_.pidOf(docked.id), process.pid());
    EXPECT_EQ(observer_.leafAt(docked.area.centre()), docked.id);
    const bool named = !GetParam().className.empty();
    EXPECT_EQ(readFile("/proc/" + std::to_string(process.pid()) + "/comm"),
              (named ? GetParam().id : std::string()) + "\n");
    EXPECT_EQ(text(docked.id, "WM_NAME").value_or(""), GetParam().className);
    EXPECT_EQ(text(docked.id, "_NET_WM_NAME").value_or(""), GetParam().className);
    EXPECT_EQ(process.terminate(defaultBound), (ExitStatus{std::nullopt, SIGTERM}));
    EXPECT_TRUE(waitFor("the icon goes", [&] { return observer_.trayIcons().empty(); }));
}

INSTANTIATE_TEST_SUITE_P(Docking, EveryItem, testing::ValuesIn(expectedKinds()),
                         [](const auto& instance) { return onlyLetters(instance.param.id); });

TEST_F(Docking, twinsAreTwoWindowsOfOneProcess) {
    startTray();
    auto& process = startItem("twins");
    const auto both = icons(2);
    EXPECT_NE(both[0].id, both[1].id);
    for (const auto& each : both) {
        EXPECT_EQ(observer_.pidOf(each.id), process.pid());
        EXPECT_EQ(each.className, "Twins");
    }
    EXPECT_TRUE(observer_.sameClient(both[0].id, both[1].id));
    EXPECT_NE(text(both[0].id, "WM_NAME"), text(both[1].id, "WM_NAME"));
}

TEST_F(Docking, withoutATrayItWaitsUnseen) {
    auto& process = startItem("wifi");
    const auto isItsOwn = [&](const WindowState& each) {
        return observer_.pidOf(each.id) == process.pid();
    };
    ASSERT_TRUE(waitFor("it has connected",
                        [&] { return std::ranges::any_of(observer_.tree(), isItsOwn); }));
    EXPECT_TRUE(staysTrue(
        "nothing is shown",
        [&] {
            return std::ranges::none_of(observer_.tree(), [&](const auto& each) {
                return isItsOwn(each) && each.isViewable() && each.area.width > 8;
            });
        },
        std::chrono::milliseconds(300)));
    startTray();
    EXPECT_EQ(icon().className, "Wi-Fi");
}

TEST_F(Docking, everyIconComesBackWhenTheTrayWasKilledAndStartedAgain) {
    auto* tray = &startTray();
    for (const char* kind : {"battery", "twins", "cpu"})
        startItem(kind);
    for (int round = 0; round < 3; ++round) {
        icons(4);
        tray->kill();
        ASSERT_TRUE(waitFor("the tray is gone", [&] { return observer_.trayOwner() == 0; }));
        tray = &startTray();
        for (const auto& each : icons(4)) {
            EXPECT_EQ(each.area.y, 0);
            EXPECT_TRUE(waitFor("it is drawn to its lower right corner", [&] {
                const auto image = observer_.imageOf(each.id);
                return image && image->colours() > 4 && image->height == barHeight &&
                       image->at(image->width - 1, image->height - 1) == (0xff000000 | background);
            })) << each.className;
        }
    }
    const auto all = icons(4);
    EXPECT_EQ(std::ranges::count(all, "Twins", &WindowState::className), 2);
    EXPECT_TRUE(waitFor("it is drawn again", [&] {
        const auto image = observer_.imageOf(all.front().id);
        return image && image->colours() > 4;
    }));
    openMenu(all.front());
    closeMenu();
}

TEST_F(Docking, nothingIsLeftOnTheScreenWhileThereIsNoTray) {
    auto& tray = startTray();
    startItem("battery");
    icon();
    tray.kill();
    EXPECT_TRUE(waitFor("the screen is empty", [&] {
        const auto windows = observer_.topLevels();
        return std::ranges::none_of(windows, [](const auto& each) {
            return each.isViewable() && each.area.x >= 0 && each.area.width > 8;
        });
    }));
}

class OtherTray : public testing::TestWithParam<std::string> {};

TEST_P(OtherTray, itemsDockThereAsWell) {
    if (const std::string missing = missingPrograms({GetParam()}); !missing.empty())
        GTEST_SKIP() << missing;
    Desktop::Options options;
    options.host = GetParam();
    Desktop desktop(options);
    for (const char* kind : {"battery", "wifi"})
        desktop.start({ORRIVANE_STATUS_ITEM, kind}, desktop.environment(kind));
    ASSERT_TRUE(waitFor("both are in the tray", [&] {
        const auto icons = desktop.observer().trayIcons();
        return icons.size() == 2 && icons[0].isViewable() && icons[1].isViewable();
    }));
    const auto icons = desktop.settledIcons();
    for (const auto& each : icons) {
        EXPECT_TRUE(waitFor("it is drawn", [&] {
            const auto image = desktop.observer().imageOf(each.id);
            return image && image->colours() > 4;
        }));
    }
    desktop.observer().click(icons[0].area.centre());
    EXPECT_TRUE(waitFor("its menu opens", [&] { return !desktop.observer().popups().empty(); }));
}

INSTANTIATE_TEST_SUITE_P(Docking, OtherTray, testing::Values("trayer", "tint2"),
                         [](const auto& instance) { return instance.param; });

} // namespace
} // namespace orrivane::e2e
