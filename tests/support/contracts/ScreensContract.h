#pragma once

#include <Orrivane/platform/Screens.h>
#include <tests/support/contracts/Contract.h>

#include <algorithm>

namespace orrivane {

/// The world also offers: `Screens& screens()`, `bool attachPlain()` (one screen without a camera
/// housing), `bool attachNotched()` (one screen with one), `bool attachTwo()`, `bool detachAll()`
/// and `bool setDisplayAsleep(bool)`. At first at least one screen is attached.
template <typename World>
class ScreensContract : public Contract<World> {
  protected:
    Screens& screens() { return this->world.screens(); }

    static void expectInside(const Rect& inner, const Rect& outer) {
        EXPECT_GE(inner.minX(), outer.minX());
        EXPECT_GE(inner.minY(), outer.minY());
        EXPECT_LE(inner.maxX(), outer.maxX());
        EXPECT_LE(inner.maxY(), outer.maxY());
    }
};

TYPED_TEST_SUITE_P(ScreensContract);

TYPED_TEST_P(ScreensContract, everyScreenHasAnAreaAndNoNegativeInset) {
    const auto screens = this->screens().screens();
    ASSERT_FALSE(screens.empty());
    for (const auto& screen : screens) {
        EXPECT_GT(screen.frame.size.width, 0);
        EXPECT_GT(screen.frame.size.height, 0);
        EXPECT_GE(screen.safeAreaTop, 0);
    }
}

TYPED_TEST_P(ScreensContract, theMainScreenIsOneOfTheScreensInTheSameTerms) {
    const auto screens = this->screens().screens();
    const auto main = this->screens().mainScreen();
    ASSERT_TRUE(main);
    EXPECT_EQ(std::ranges::count(screens, *main), 1);
}

TYPED_TEST_P(ScreensContract, theVisibleFrameLiesInsideItsScreen) {
    for (const auto& screen : this->screens().screens()) {
        const auto visible = this->screens().visibleFrame(screen);
        EXPECT_GT(visible.width(), 0);
        EXPECT_GT(visible.height(), 0);
        this->expectInside(visible, screen.frame);
    }
}

TYPED_TEST_P(ScreensContract, aScreenWithoutAHousingHasNeitherInsetNorAuxiliaryAreas) {
    if (!this->world.attachPlain())
        GTEST_SKIP() << "a screen without a housing cannot be attached here";
    const auto screens = this->screens().screens();
    ASSERT_EQ(screens.size(), 1U);
    EXPECT_EQ(screens[0].safeAreaTop, 0);
    EXPECT_FALSE(screens[0].auxiliaryTopLeftArea);
    EXPECT_FALSE(screens[0].auxiliaryTopRightArea);
}

TYPED_TEST_P(ScreensContract, theAuxiliaryAreasLieLeftAndRightOfTheHousingInTheTopBand) {
    if (!this->world.attachNotched())
        GTEST_SKIP() << "a screen with a housing cannot be attached here";
    const auto screens = this->screens().screens();
    ASSERT_EQ(screens.size(), 1U);
    const auto& screen = screens[0];
    ASSERT_GT(screen.safeAreaTop, 0);
    ASSERT_TRUE(screen.auxiliaryTopLeftArea);
    ASSERT_TRUE(screen.auxiliaryTopRightArea);
    const Rect band{{screen.frame.minX(), screen.frame.maxY() - screen.safeAreaTop},
                    {screen.frame.width(), screen.safeAreaTop}};
    this->expectInside(*screen.auxiliaryTopLeftArea, band);
    this->expectInside(*screen.auxiliaryTopRightArea, band);
    EXPECT_EQ(screen.auxiliaryTopLeftArea->minX(), screen.frame.minX());
    EXPECT_EQ(screen.auxiliaryTopRightArea->maxX(), screen.frame.maxX());
    EXPECT_LT(screen.auxiliaryTopLeftArea->maxX(), screen.auxiliaryTopRightArea->minX());
}

TYPED_TEST_P(ScreensContract, twoScreensAreTwoAndDoNotShareAFrame) {
    if (!this->world.attachTwo())
        GTEST_SKIP() << "a second screen cannot be attached here";
    const auto screens = this->screens().screens();
    ASSERT_EQ(screens.size(), 2U);
    EXPECT_NE(screens[0].frame, screens[1].frame);
}

TYPED_TEST_P(ScreensContract, withoutScreensTheListIsEmptyAndThereIsNoMainScreen) {
    if (!this->world.detachAll())
        GTEST_SKIP() << "the last screen cannot be detached here";
    EXPECT_TRUE(this->screens().screens().empty());
    EXPECT_FALSE(this->screens().mainScreen());
}

TYPED_TEST_P(ScreensContract, theMainDisplayTellsWhetherItSleeps) {
    EXPECT_FALSE(this->screens().mainDisplayIsAsleep());
    if (!this->world.setDisplayAsleep(true))
        GTEST_SKIP() << "the display cannot be put to sleep here";
    EXPECT_TRUE(this->world.pumpUntil([&] { return this->screens().mainDisplayIsAsleep(); }));
    this->world.setDisplayAsleep(false);
    EXPECT_TRUE(this->world.pumpUntil([&] { return !this->screens().mainDisplayIsAsleep(); }));
}

REGISTER_TYPED_TEST_SUITE_P(ScreensContract, everyScreenHasAnAreaAndNoNegativeInset,
                            theMainScreenIsOneOfTheScreensInTheSameTerms,
                            theVisibleFrameLiesInsideItsScreen,
                            aScreenWithoutAHousingHasNeitherInsetNorAuxiliaryAreas,
                            theAuxiliaryAreasLieLeftAndRightOfTheHousingInTheTopBand,
                            twoScreensAreTwoAndDoNotShareAFrame,
                            withoutScreensTheListIsEmptyAndThereIsNoMainScreen,
                            theMainDisplayTellsWhetherItSleeps);

} // namespace orrivane
