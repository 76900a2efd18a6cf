#include "StripFixture.h"

#include <tests/support/ScriptedImage.h>

namespace orrivane {
namespace {

struct Images : StripFixture {
    [[nodiscard]] bool hasImage(std::size_t cell) const {
        const auto label = world.trayPanel.buttons().at(cell).label;
        return std::holds_alternative<DrawnImage>(label.primitives.at(1));
    }
};

TEST_F(Images, areCapturedOnTheFirstTickAndOnEveryThirdAfterIt) {
    start();
    std::vector<std::size_t> counts{captureCount() / 2};
    for (int tick = 2; tick <= 8; ++tick) {
        advance(1);
        counts.push_back(captureCount() / 2);
    }
    EXPECT_EQ(counts, (std::vector<std::size_t>{1, 1, 1, 2, 2, 2, 3, 3}));
}

TEST_F(Images, standInTheCellOfTheirOwnItem) {
    for (const auto id : {left, right})
        world.screenCapture.images.emplace(id, ScriptedImage::make(static_cast<int>(id), 74));
    start();
    for (const std::size_t cell : {0U, 1U}) {
        const auto label = world.trayPanel.buttons().at(cell).label;
        EXPECT_EQ(std::get<DrawnImage>(label.primitives.at(1)).image,
                  world.screenCapture.images.at(row().at(cell)));
    }
}

TEST_F(Images, ofAnUnchangedSetOwnersAreNotResolvedAgain) {
    start();
    advance(10);
    EXPECT_EQ(ownerWalks(), 1U);
}

TEST_F(Images, aNewItemIsResolvedAndCapturedOnTheSameTick) {
    start();
    const auto contents = world.screenCapture.contentCalls;
    addItem(13, 690, 20, 3, "New");
    advance(1);
    EXPECT_EQ(row(), (Row{13, left, right}));
    EXPECT_TRUE(hasImage(0));
    EXPECT_EQ(ownerWalks(), 2U);
    EXPECT_EQ(captureCount(), 5U);
    EXPECT_EQ(world.screenCapture.contentCalls, contents + 1) << "the window cache was dropped";
}

TEST_F(Images, ofItemsNoLongerMirroredAreDropped) {
    start();
    world.windowList.remove(left);
    advance(3); // the third of these ticks captures and replaces the whole map
    EXPECT_EQ(row(), Row{right});
    world.windowList.add(left, {{700, 0}, {30, 37}});
    const auto captured = captureCount();
    advance(1);
    EXPECT_EQ(captureCount(), captured + 2) << "its old image was gone";
}

TEST_F(Images, aSetThatOnlyShrinksIsResolvedAgainButNotCaptured) {
    start();
    world.windowList.remove(left);
    advance(1);
    EXPECT_EQ(ownerWalks(), 1U + 1U);
    EXPECT_EQ(captureCount(), 2U);
    EXPECT_TRUE(hasImage(0));
}

TEST_F(Images, anItemThatCannotBeCapturedIsAPlaceholderAndTriedAtEveryTick) {
    world.screenCapture.captureReplies[left] = CaptureReply::failure();
    start();
    EXPECT_FALSE(hasImage(0));
    EXPECT_TRUE(hasImage(1));
    advance(2);
    EXPECT_EQ(captureCount(), 6U);
    world.screenCapture.captureReplies.erase(left);
    advance(1);
    EXPECT_TRUE(hasImage(0));
}

TEST_F(Images, aCaptureThatNeverAnswersDoesNotStallTheLoop) {
    world.screenCapture.captureReply = CaptureReply::never();
    start();
    EXPECT_FALSE(shown());
    advance(2.1);
    EXPECT_TRUE(shown());
    EXPECT_FALSE(hasImage(0));
    world.screenCapture.captureReply = CaptureReply::now();
    advance(3);
    EXPECT_TRUE(hasImage(0));
}

TEST_F(Images, aFailingSnapshotShowsPlaceholders) {
    world.screenCapture.contentReply = CaptureReply::failure();
    start();
    EXPECT_EQ(row(), (Row{left, right}));
    EXPECT_FALSE(hasImage(0));
}

TEST_F(Images, aSnapshotThatNeverAnswersDoesNotStallTheLoop) {
    world.screenCapture.contentReplies = {CaptureReply::never()};
    start();
    advance(1.9);
    EXPECT_FALSE(shown());
    advance(0.2);
    EXPECT_EQ(row(), (Row{left, right}));
    EXPECT_FALSE(hasImage(0));
    advance(1);
    EXPECT_TRUE(hasImage(0));
}

TEST_F(Images, aFailedSecondSnapshotCostsOnlyTheNewItemItsImage) {
    start();
    addItem(13, 690, 20, 3, "New");
    world.screenCapture.removeWindow(13); // no snapshot lists it yet
    world.screenCapture.contentReplies = {CaptureReply::now(), CaptureReply::failure()};
    advance(1);
    EXPECT_EQ(row(), (Row{13, left, right}));
    EXPECT_FALSE(hasImage(0));
    EXPECT_TRUE(hasImage(1));
    EXPECT_TRUE(hasImage(2));
    EXPECT_TRUE(world.screenCapture.contentReplies.empty()) << "both snapshots were asked for";
}

TEST_F(Images, ofTheLastCaptureReplaceAllEarlierOnes) {
    start();
    world.screenCapture.captureReplies[left] = CaptureReply::failure();
    advance(2);
    EXPECT_TRUE(hasImage(0));
    advance(1); // the fourth tick captures again
    EXPECT_FALSE(hasImage(0)) << "the old image does not stay for want of a new one";
}

struct Press : StripFixture {
    void press(std::uint32_t id) { world.trayPanel.click(id == left ? 0 : 1); }
    [[nodiscard]] const AccessibilityElement& pressed(std::size_t index) const {
        return world.accessibility.performed.at(index).element;
    }
    void opens(std::uint32_t id) {
        const auto element = elements.at(id);
        world.accessibility.setAction(element, "AXPress", 0, [this, element] {
            world.accessibility.setMenuOpen(element, true);
        });
    }
};

TEST_F(Press, aClickPressesTheItemsOwnOwner) {
    start();
    press(right);
    ASSERT_EQ(presses(), 1U);
    EXPECT_EQ(pressed(0), elements.at(right));
    EXPECT_EQ(world.accessibility.performed[0].action, "AXPress");
}

TEST_F(Press, aSecondClickBeforeTheNextTickOnlyForgetsTheOpenMenu) {
    opens(left);
    start();
    press(left);
    press(left);
    EXPECT_EQ(presses(), 1U);
    press(left);
    EXPECT_EQ(presses(), 2U);
}

TEST_F(Press, aMenuStillOpenIsRememberedByTheTick) {
    opens(left);
    start();
    press(left);
    advance(3);
    EXPECT_EQ(row(), (Row{left, right})) << "the strip stays as it is under an open menu";
    press(left);
    EXPECT_EQ(presses(), 1U);
}

TEST_F(Press, theTickAfterTheMenuClosedForgetsIt) {
    opens(left);
    start();
    press(left);
    advance(1);
    world.accessibility.setMenuOpen(elements.at(left), false);
    advance(1);
    press(left);
    EXPECT_EQ(presses(), 2U);
}

TEST_F(Press, aPressThatOpenedNothingIsForgottenByTheNextTick) {
    start();
    press(left);
    advance(1);
    press(left);
    EXPECT_EQ(presses(), 2U);
}

TEST_F(Press, aMenuWhoseItemLostItsOwnerIsForgotten) {
    opens(left);
    start();
    press(left);
    world.windowList.remove(left);
    advance(1);
    world.windowList.add(left, {{700, 0}, {30, 37}});
    advance(1);
    press(left);
    EXPECT_EQ(presses(), 2U);
}

TEST_F(Press, anotherIconIsPressedWhileAMenuIsOpen) {
    opens(left);
    start();
    press(left);
    press(right);
    press(left);
    EXPECT_EQ(presses(), 3U);
}

TEST_F(Press, aRefusedPressIsLoggedAndRememberedAllTheSame) {
    world.accessibility.setAction(elements.at(left), "AXPress", -25204);
    start();
    press(left);
    EXPECT_EQ(world.log.lines.size(), 1U);
    press(left);
    EXPECT_EQ(presses(), 1U);
}

TEST_F(Press, theRightButtonHasItsOwnActionWhereThePlatformHasOne) {
    world.accessibility.hasSecondaryAction = true;
    world.accessibility.setAction(elements.at(left), "AXShowMenu", 0);
    start();
    world.trayPanel.clickSecondary(0);
    ASSERT_EQ(presses(), 1U);
    EXPECT_EQ(world.accessibility.performed[0].action, "AXShowMenu");
    world.trayPanel.clickSecondary(0);
    EXPECT_EQ(presses(), 1U) << "it shares the rule of the open menu";
}

TEST_F(Press, withoutSuchActionsTheRightButtonDoesNothing) {
    start();
    EXPECT_FALSE(world.trayPanel.buttons()[0].secondaryAction.run);
}

TEST_F(Press, anActionThatOutlivesTheControllerDoesNothing) {
    start();
    const auto button = world.trayPanel.buttons().at(0);
    controller.reset();
    button.action.run();
    EXPECT_EQ(presses(), 0U);
}

} // namespace
} // namespace orrivane
