#include "Random.h"
#include "ReferenceCensus.h"
#include "StripFixture.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace orrivane {
namespace {

constexpr int rounds = 2000;

struct Properties : testing::Test {
    Random random;
    testing::ScopedTrace trace{__FILE__, __LINE__, random.trace()};

    std::vector<ScreenDescription> screens() {
        std::vector<ScreenDescription> result;
        double x = 0;
        for (int i = random.integer(0, 3); i > 0; --i) {
            const double width = random.integer(800, 3000);
            auto screen = random.chance(0.5)
                              ? ScriptedScreens::notched({width, 982}, random.integer(20, 40),
                                                         width * 0.45, width * 0.55)
                              : ScriptedScreens::plain({{0, 0}, {width, 1080}});
            for (auto* area : {&screen.auxiliaryTopLeftArea, &screen.auxiliaryTopRightArea})
                if (*area) {
                    (*area)->origin.x += x;
                    if (random.chance(0.1))
                        area->reset();
                }
            screen.frame.origin = {x, static_cast<double>(random.integer(-300, 300))};
            x += width;
            result.push_back(screen);
        }
        return result;
    }

    std::vector<WindowListEntry> windows() {
        std::vector<WindowListEntry> result;
        // Mostly a bar's worth; sometimes more than any bar holds.
        const int most = random.chance(0.1) ? 400 : 60;
        for (int i = random.integer(0, most); i > 0; --i) {
            WindowListEntry entry;
            if (random.chance(0.95))
                entry.layer = random.integer(24, 26) == 24 ? 24 : 25;
            if (random.chance(0.95))
                entry.number = static_cast<std::uint32_t>(random.integer(1, 2 * most));
            if (random.chance(0.95))
                entry.bounds = Rect{{random.real(-50, 6000) * (random.chance(0.5) ? 0.25 : 1),
                                     static_cast<double>(random.integer(-3, 3))},
                                    {random.real(-60, 420), random.real(-41, 41)}};
            if (entry.bounds && random.chance(0.5))
                entry.bounds = Rect{{std::round(entry.bounds->origin.x / 20) * 20, 0}, {20, 24}};
            if (random.chance(0.5))
                entry.onscreen = random.chance(0.5);
            result.push_back(entry);
        }
        return result;
    }
};

TEST_F(Properties, aCensusIsWhatThePlainestOneIs) {
    std::size_t items = 0;
    for (int round = 0; round < rounds; ++round) {
        const auto layout = screens();
        const auto all = windows();
        const auto onscreen = windows();
        const auto result = WindowCensus::take(layout, all, onscreen);
        const auto expected = referenceCensus(layout, all, onscreen);
        ASSERT_EQ(result.notch, expected.notch);
        ASSERT_EQ(result.items, expected.items);
        items += result.items.size();
    }
    EXPECT_GT(items, std::size_t{rounds}) << "too little was compared";
}

TEST_F(Properties, aCensusIsOrderedStablyAndTakesEachNumberOnce) {
    for (int round = 0; round < rounds; ++round) {
        const auto all = windows();
        const auto result = WindowCensus::take(screens(), all, windows());
        std::set<std::uint32_t> seen;
        const auto place = [&](const StatusItemWindow& item) {
            return std::ranges::find_if(all, [&](const WindowListEntry& entry) {
                return entry.number == item.id && entry.bounds == item.frame && entry.layer == 25;
            });
        };
        for (std::size_t i = 0; i < result.items.size(); ++i) {
            ASSERT_TRUE(seen.insert(result.items[i].id).second);
            if (i == 0)
                continue;
            const auto& before = result.items[i - 1];
            ASSERT_LE(before.frame.minX(), result.items[i].frame.minX());
            if (before.frame.minX() == result.items[i].frame.minX()) {
                ASSERT_LT(place(before), place(result.items[i]));
            }
        }
    }
}

TEST_F(Properties, whatIsEatenIsASublistOfTheItemsAndOverlapsTheNotch) {
    for (int round = 0; round < rounds; ++round) {
        const auto result = WindowCensus::take(screens(), windows(), {});
        auto next = result.items.begin();
        for (const auto& eaten : result.eaten()) {
            next = std::find(next, result.items.end(), eaten);
            ASSERT_NE(next, result.items.end());
            ++next;
            ASSERT_TRUE(result.notch);
            ASSERT_LT(eaten.frame.minX(), result.notch->notchMaxX);
            ASSERT_GT(eaten.frame.maxX(), result.notch->notchMinX);
        }
        if (!result.notch) {
            ASSERT_TRUE(result.eaten().empty());
        }
    }
}

TEST_F(Properties, theFittedRunIsTheLongestAtTheRightThatTheRoomHolds) {
    for (int round = 0; round < rounds; ++round) {
        const auto census = WindowCensus::take(screens(), windows(), {});
        if (!census.notch)
            continue;
        const auto& notch = *census.notch;
        const auto eaten = census.eaten();
        const double menus = random.real(0, 0.5 * notch.screenWidth);
        const double room = (notch.notchMinX - 6) - (notch.screenMinX + menus + 10);
        const auto fitted = StripController::fit(eaten, notch, menus);
        // Summed as a bar grows, from the right, so that rounding is the same.
        double total = 0;
        for (auto item = fitted.rbegin(); item != fitted.rend(); ++item)
            total += item->frame.width();
        if (!fitted.empty()) {
            ASSERT_LE(total, room);
        }
        const auto first = eaten.size() - fitted.size();
        ASSERT_TRUE(std::equal(fitted.begin(), fitted.end(),
                               eaten.begin() + static_cast<std::ptrdiff_t>(first)));
        if (first > 0) {
            ASSERT_GT(total + eaten[first - 1].frame.width(), room);
        }
    }
}

TEST_F(Properties, anOwnerIsNeverFartherThanTwentyPointsAndNoneIsNearer) {
    ScriptedAccessibility accessibility;
    for (int round = 0; round < rounds; ++round) {
        const auto layout = screens();
        std::vector<IconOwner> owners;
        for (int i = random.integer(0, 12); i > 0; --i)
            owners.push_back(
                {accessibility.makeElement(1), "App", 1, Rect{{random.real(0, 400), 0}, {20, 24}}});
        const StatusItemWindow window{1, Rect{{random.real(0, 400), 0}, {20, 24}}, true, true};
        const auto distance = [&](const Rect& frame) {
            return std::abs(
                (IconIdentity::barRightEdge(frame, layout) - frame.midX()) -
                (IconIdentity::barRightEdge(window.frame, layout) - window.frame.midX()));
        };
        const auto owner = IconIdentity::owner(window, owners, layout);
        for (const auto& candidate : owners)
            if (owner) {
                ASSERT_LE(distance(owner->frame), distance(candidate.frame));
            } else {
                ASSERT_GT(distance(candidate.frame), 20);
            }
        if (owner) {
            ASSERT_LE(distance(owner->frame), 20);
        }
    }
}

} // namespace
} // namespace orrivane
