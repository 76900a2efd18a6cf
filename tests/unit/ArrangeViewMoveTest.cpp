#include <tests/unit/ArrangeFixture.h>

namespace orrivane {
namespace {

using ArrangeViewMoveTest = ArrangeFixture;
using Order = std::vector<std::uint32_t>;

TEST_F(ArrangeViewMoveTest, aDragRemembersItsTile) {
    appear();
    view->beginDrag(13);
    EXPECT_EQ(view->draggingID(), 13U);
    EXPECT_EQ(view->insertionIndex(), std::nullopt);
}

TEST_F(ArrangeViewMoveTest, leavingATileForgetsOnlyTheGapsBesideIt) {
    for (const auto& [gap, left] :
         {std::pair{7, true}, {1, true}, {4, true}, {2, false}, {3, false}}) {
        view->setInsertion(gap);
        view->clearInsertion(2);
        EXPECT_EQ(view->insertionIndex().has_value(), left) << gap;
    }
}

TEST_F(ArrangeViewMoveTest, leavingATileWithoutAGapChangesNothing) {
    view->clearInsertion(2);
    EXPECT_EQ(view->insertionIndex(), std::nullopt);
}

TEST_F(ArrangeViewMoveTest, aDropMovesTheItemOnePointLeftOfTheOneInTheGap) {
    appear();
    EXPECT_TRUE(dragAndDrop(12, 3));
    ASSERT_EQ(moves.size(), 1U);
    EXPECT_EQ(moves[0].item, view->items()[1]);
    EXPECT_EQ(moves[0].toX, 989);
    EXPECT_FALSE(isDragging());
}

TEST_F(ArrangeViewMoveTest, aDropAfterTheLastTileGoesOnePointRightOfIt) {
    appear();
    EXPECT_TRUE(dragAndDrop(12, 4));
    ASSERT_EQ(moves.size(), 1U);
    EXPECT_EQ(moves[0].toX, 1013);
}

TEST_F(ArrangeViewMoveTest, aDropWhereTheTileStandsIsRefusedAndEndsTheDrag) {
    appear();
    for (const int gap : {1, 2}) {
        view->beginDrag(12);
        view->setInsertion(gap);
        EXPECT_FALSE(view->performDrop());
        EXPECT_FALSE(isDragging());
        view->endDrag();
    }
    world.loop.advance(5);
    EXPECT_TRUE(moves.empty());
}

TEST_F(ArrangeViewMoveTest, aDropWithNothingDraggedOrNoGapIsRefused) {
    appear();
    view->setInsertion(3);
    EXPECT_FALSE(view->performDrop());
    EXPECT_FALSE(isDragging());
    view->beginDrag(12);
    EXPECT_FALSE(view->performDrop());
    EXPECT_FALSE(isDragging());
    EXPECT_TRUE(moves.empty());
}

TEST_F(ArrangeViewMoveTest, aDropOfATileThatIsGoneIsRefused) {
    appear();
    EXPECT_FALSE(dragAndDrop(99, 0));
    EXPECT_FALSE(isDragging());
    EXPECT_TRUE(moves.empty());
}

TEST_F(ArrangeViewMoveTest, aDropWhileAMoveIsInProgressIsRefusedAndEndsTheDrag) {
    appear();
    EXPECT_TRUE(dragAndDrop(12, 4));
    EXPECT_TRUE(view->isWorking());
    EXPECT_FALSE(dragAndDrop(11, 3));
    EXPECT_FALSE(isDragging());
    EXPECT_EQ(moves.size(), 1U);
}

TEST_F(ArrangeViewMoveTest, aDropDuringARefreshIsRefused) {
    appear();
    world.screenCapture.captureReply = CaptureReply::later(0.5);
    run(view->refresh());
    EXPECT_FALSE(dragAndDrop(12, 4));
    EXPECT_TRUE(moves.empty());
}

TEST_F(ArrangeViewMoveTest, aMoveBeginsOnlyWhenTheToolkitsDragIsOver) {
    appear();
    view->beginDrag(12);
    view->setInsertion(4);
    EXPECT_TRUE(view->performDrop());
    world.loop.advance(3);
    EXPECT_TRUE(moves.empty());
    EXPECT_FALSE(view->isWorking());
    view->endDrag();
    world.loop.runUntilIdle();
    EXPECT_EQ(moves.size(), 1U);
    EXPECT_TRUE(view->isWorking());
}

TEST_F(ArrangeViewMoveTest, aSecondDropBeforeTheFirstOnesDragIsOverIsRefused) {
    appear();
    view->beginDrag(12);
    view->setInsertion(4);
    EXPECT_TRUE(view->performDrop());
    view->beginDrag(11);
    view->setInsertion(3);
    EXPECT_FALSE(view->performDrop());
    view->endDrag();
    world.loop.runUntilIdle();
    ASSERT_EQ(moves.size(), 1U);
    EXPECT_EQ(moves[0].item.id, 12U);
}

TEST_F(ArrangeViewMoveTest, aCancelledDragLeavesNothingBehind) {
    appear();
    view->beginDrag(12);
    view->setInsertion(3);
    view->endDrag();
    world.loop.advance(5);
    EXPECT_FALSE(isDragging());
    EXPECT_TRUE(moves.empty());
}

TEST_F(ArrangeViewMoveTest, aDropThatComesAfterItsDragsEndIsRefused) {
    appear();
    view->beginDrag(13);
    view->setInsertion(0);
    view->endDrag();
    view->setInsertion(0);
    EXPECT_FALSE(view->performDrop());
    world.loop.advance(5);
    EXPECT_TRUE(moves.empty());
}

TEST_F(ArrangeViewMoveTest, aStepIsADragToTheNextGap) {
    appear();
    view->step(13, -1);
    EXPECT_EQ(view->draggingID(), 13U);
    EXPECT_EQ(view->insertionIndex(), 1);
    world.loop.advance(5);
    EXPECT_TRUE(moves.empty());
    EXPECT_TRUE(view->performDrop());
    view->endDrag();
    world.loop.runUntilIdle();
    ASSERT_EQ(moves.size(), 1U);
    EXPECT_EQ(moves[0].item.id, 13U);
    EXPECT_EQ(moves[0].toX, 899);
}

TEST_F(ArrangeViewMoveTest, stepsAddUpBeforeTheDrop) {
    appear();
    view->step(12, 1);
    view->step(12, 1);
    view->step(12, 1);
    EXPECT_EQ(view->insertionIndex(), 4);
    EXPECT_TRUE(view->performDrop());
    view->endDrag();
    world.loop.runUntilIdle();
    ASSERT_EQ(moves.size(), 1U);
    EXPECT_EQ(moves[0].toX, 1013);
}

TEST_F(ArrangeViewMoveTest, aStepBeyondTheEndMovesNothing) {
    appear();
    view->step(14, 1);
    EXPECT_FALSE(view->performDrop());
    view->step(11, -1);
    EXPECT_FALSE(view->performDrop());
    view->endDrag();
    world.loop.advance(5);
    EXPECT_TRUE(moves.empty());
    EXPECT_FALSE(isDragging());
}

TEST_F(ArrangeViewMoveTest, aStepOfAnotherItemLeavesTheDragUnderWayAlone) {
    appear();
    view->beginDrag(12);
    view->setInsertion(0);
    view->step(13, 1);
    EXPECT_EQ(view->draggingID(), 12U);
    EXPECT_EQ(view->insertionIndex(), 0);
    view->endDrag();
    view->step(99, 1);
    EXPECT_FALSE(isDragging());
}

TEST_F(ArrangeViewMoveTest, nothingIsTakenUpWhileAMoveIsInProgress) {
    appear();
    ASSERT_TRUE(dragAndDrop(13, 0));
    view->step(12, 1);
    EXPECT_FALSE(isDragging());
}

TEST_F(ArrangeViewMoveTest, afterAMoveItWaits700MillisecondsAndReadsTheBarAgain) {
    appear();
    EXPECT_EQ(ArrangeView::settlingTime, 0.7);
    const auto censuses = world.journal.count("allWindows");
    dragAndDrop(12, 4);
    world.windowList.remove(12);
    addItem(12, 1020, 30, "");
    world.loop.advance(moveTime + ArrangeView::settlingTime - 0.01);
    EXPECT_EQ(world.journal.count("allWindows"), censuses);
    EXPECT_EQ(order(), (Order{11, 12, 13, 14}));
    EXPECT_TRUE(view->isWorking());
    world.loop.advance(0.02);
    EXPECT_EQ(world.journal.count("allWindows"), censuses + 1);
    EXPECT_EQ(order(), (Order{11, 13, 14, 12}));
    EXPECT_FALSE(view->isWorking());
}

TEST_F(ArrangeViewMoveTest, isWorkingUntilTheImagesAfterTheMoveAreThere) {
    appear();
    world.screenCapture.captureReply = CaptureReply::later(0.5);
    dragAndDrop(12, 4);
    world.loop.advance(moveTime + ArrangeView::settlingTime + 0.49);
    EXPECT_TRUE(view->isWorking());
    world.loop.advance(0.02);
    EXPECT_FALSE(view->isWorking());
}

TEST_F(ArrangeViewMoveTest, aCancelledMoveOnlySkipsItsPauses) {
    appear();
    const auto item = view->items()[1];
    const auto censuses = world.journal.count("allWindows");
    const auto handle = start(world.loop, view->perform(item, 1013));
    world.loop.runUntilIdle();
    handle.cancel();
    world.loop.runUntilIdle();
    EXPECT_EQ(world.loop.elapsed(), 0);
    EXPECT_EQ(moves.size(), 1U);
    EXPECT_EQ(world.journal.count("allWindows"), censuses + 1);
    EXPECT_FALSE(view->isWorking());
}

TEST_F(ArrangeViewMoveTest, aMoveGoesOnWithoutAnybodyElseHoldingTheView) {
    appear();
    const auto censuses = world.journal.count("allWindows");
    dragAndDrop(12, 4);
    const std::weak_ptr<ArrangeView> weak = view;
    view.reset();
    EXPECT_FALSE(weak.expired());
    world.loop.advance(5);
    EXPECT_EQ(world.journal.count("allWindows"), censuses + 1);
    EXPECT_TRUE(weak.expired());
}

TEST_F(ArrangeViewMoveTest, aViewThatAppearsDuringAMoveLeavesReadingToIt) {
    appear();
    dragAndDrop(12, 4);
    const auto censuses = world.journal.count("allWindows");
    appear();
    EXPECT_EQ(world.journal.count("allWindows"), censuses);
    world.loop.advance(5);
    EXPECT_EQ(world.journal.count("allWindows"), censuses + 1);
}

TEST_F(ArrangeViewMoveTest, aDropDelegateTurnsThePointerIntoGaps) {
    std::vector<int> set;
    std::vector<int> cleared;
    int performed = 0;
    const TileDropDelegate drop{2, 30, [&](int gap) { set.push_back(gap); },
                                [&](int index) { cleared.push_back(index); },
                                [&] { return ++performed > 1; }};
    drop.dropUpdated(14.9);
    drop.dropUpdated(15);
    EXPECT_EQ(set, (std::vector{2, 3}));
    drop.dropExited();
    EXPECT_EQ(cleared, (std::vector{2}));
    EXPECT_FALSE(drop.performDrop());
    EXPECT_TRUE(drop.performDrop());
}

} // namespace
} // namespace orrivane
