#pragma once

#include <Orrivane/platform/MainWindow.h>
#include <tests/support/contracts/Contract.h>

#include <cmath>

namespace orrivane {

/// The world also offers: `MainWindow& window()` (not created), `View root()` (something to show)
/// and `bool closeByUser()`.
template <typename World>
class MainWindowContract : public Contract<World> {
  protected:
    MainWindow& window() { return this->world.window(); }

    void create() {
        window().create({"Orrivane", {600, 400}, {300, 200}});
        window().setRoot(this->world.root());
    }
    bool show() {
        window().makeKeyAndOrderFront();
        return this->world.pumpUntil([&] { return window().isVisible(); });
    }
    bool reaches(const Rect& frame) {
        return this->world.pumpUntil([&] { return isNear(window().frame(), frame); });
    }
    // Window systems place windows on whole pixels.
    static bool isNear(const Rect& a, const Rect& b) {
        return std::abs(a.minX() - b.minX()) <= 1 && std::abs(a.minY() - b.minY()) <= 1 &&
               std::abs(a.width() - b.width()) <= 1 && std::abs(a.height() - b.height()) <= 1;
    }
};

TYPED_TEST_SUITE_P(MainWindowContract);

TYPED_TEST_P(MainWindowContract, aNewWindowIsHiddenAndHasTheContentSizeAskedFor) {
    this->create();
    EXPECT_FALSE(this->window().isVisible());
    const auto content = this->window().contentRect(this->window().frame());
    EXPECT_NEAR(content.width(), 600, 1);
    EXPECT_NEAR(content.height(), 400, 1);
}

TYPED_TEST_P(MainWindowContract, closingHidesTheWindowAndItCanBeShownAgain) {
    this->create();
    ASSERT_TRUE(this->show());
    if (!this->world.closeByUser())
        GTEST_SKIP() << "no user can close the window here";
    ASSERT_TRUE(this->world.pumpUntil([&] { return !this->window().isVisible(); }));
    EXPECT_TRUE(this->show());
}

TYPED_TEST_P(MainWindowContract, frameAndContentRectanglesAreEachOthersInverse) {
    this->create();
    ASSERT_TRUE(this->show());
    const Rect content{{100, 200}, {640, 480}};
    const auto frame = this->window().frameRect(content);
    EXPECT_TRUE(this->isNear(this->window().contentRect(frame), content));
    EXPECT_GE(frame.height(), content.height());
    EXPECT_GE(frame.width(), content.width());
}

TYPED_TEST_P(MainWindowContract, theTopLeftCornerIsPlacedAndTheSizeStays) {
    this->create();
    ASSERT_TRUE(this->show());
    const auto before = this->window().frame();
    const Point topLeft{before.minX() + 20, before.maxY() - 30};
    this->window().setFrameTopLeft(topLeft);
    EXPECT_TRUE(this->reaches(
        {{topLeft.x, topLeft.y - before.height()}, {before.width(), before.height()}}));
}

TYPED_TEST_P(MainWindowContract, aFrameThatWasSetIsReached) {
    this->create();
    ASSERT_TRUE(this->show());
    const auto before = this->window().frame();
    const Rect lower{{before.minX(), before.minY() - 40}, {before.width(), before.height() + 40}};
    this->window().setFrame(lower);
    EXPECT_TRUE(this->reaches(lower));
}

TYPED_TEST_P(MainWindowContract, theCentredWindowStandsInTheMiddleOfItsScreen) {
    this->create();
    ASSERT_TRUE(this->show());
    const auto visible = this->window().visibleFrameOfScreen();
    if (!visible)
        GTEST_SKIP() << "there is no screen here";
    this->window().center();
    EXPECT_TRUE(this->world.pumpUntil(
        [&] { return std::abs(this->window().frame().midX() - visible->midX()) <= 1; }));
    EXPECT_GE(this->window().frame().minY(), visible->minY());
    EXPECT_LE(this->window().frame().maxY(), visible->maxY());
}

TYPED_TEST_P(MainWindowContract, theContentHasANaturalHeight) {
    this->create();
    ASSERT_TRUE(this->show());
    EXPECT_TRUE(this->world.pumpUntil([&] { return this->window().naturalContentHeight() > 0; }));
}

REGISTER_TYPED_TEST_SUITE_P(MainWindowContract, aNewWindowIsHiddenAndHasTheContentSizeAskedFor,
                            closingHidesTheWindowAndItCanBeShownAgain,
                            frameAndContentRectanglesAreEachOthersInverse,
                            theTopLeftCornerIsPlacedAndTheSizeStays, aFrameThatWasSetIsReached,
                            theCentredWindowStandsInTheMiddleOfItsScreen,
                            theContentHasANaturalHeight);

} // namespace orrivane
