#include <desktop/bar/BarPlace.h>

#include <gtest/gtest.h>

namespace orrivane::desktop {
namespace {

constexpr int plain = 24;
const QRect laptop(0, 0, 1512, 982);
const QRect beside(1512, 0, 1920, 1080);

TEST(BarPlaceTest, withoutACutoutTheBarIsPlainAndOnTheMainMonitor) {
    const BarPlace expected{beside, {1512, 0, 1920, plain}, {}};
    EXPECT_EQ(BarPlace::of({beside, laptop}, {}, plain), expected);
}

TEST(BarPlaceTest, theBarIsAsHighAsTheNotch) {
    const BarPlace expected{laptop, {0, 0, 1512, 37}, {663, 0, 185, 37}};
    EXPECT_EQ(BarPlace::of({laptop}, {663, 0, 185, 37}, plain), expected);
}

TEST(BarPlaceTest, theBarGoesToTheMonitorWithTheNotch) {
    EXPECT_EQ(BarPlace::of({beside, laptop}, {663, 0, 185, 37}, plain).screen, laptop);
}

TEST(BarPlaceTest, aNotchThatReachesPastItsMonitorEndsThere) {
    EXPECT_EQ(BarPlace::of({laptop, beside}, {1412, 0, 200, 37}, plain).notch,
              QRect(1412, 0, 100, 37));
}

TEST(BarPlaceTest, cutoutsThatAreNoNotchAreLeftOut) {
    for (const std::vector<std::uint32_t>& cutout :
         {std::vector<std::uint32_t>{600, 10, 185, 37}, // below the edge
          {600, 0, 0, 37},
          {600, 0, 185, 0},
          {5000, 0, 185, 37},
          {600, 0, 185, 900}, // deeper than half the screen
          {600, 0, 185}})     // half a cutout
        EXPECT_EQ(BarPlace::of({laptop}, cutout, plain).bar, QRect(0, 0, 1512, plain));
}

TEST(BarPlaceTest, theFirstCutoutThatIsANotchCounts) {
    EXPECT_EQ(BarPlace::of({laptop}, {600, 400, 20, 20, 663, 0, 185, 37}, plain).notch,
              QRect(663, 0, 185, 37));
}

TEST(BarPlaceTest, numbersBeyondEveryScreenDoNoHarm) {
    EXPECT_EQ(BarPlace::of({laptop}, {0xffffffff, 0, 0xffffffff, 0xffffffff}, plain).notch,
              QRect());
}

} // namespace
} // namespace orrivane::desktop
