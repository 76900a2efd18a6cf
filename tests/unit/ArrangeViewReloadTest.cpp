#include <tests/unit/ArrangeFixture.h>

namespace orrivane {
namespace {

using ArrangeViewReloadTest = ArrangeFixture;
using Order = std::vector<std::uint32_t>;

TEST_F(ArrangeViewReloadTest, startsEmptyAndAsksNothing) {
    EXPECT_TRUE(view->items().empty());
    EXPECT_TRUE(view->images().empty());
    EXPECT_TRUE(view->names().empty());
    EXPECT_FALSE(view->isWorking());
    EXPECT_FALSE(isDragging());
    EXPECT_EQ(world.journal.count("allWindows"), 0U);
}

TEST_F(ArrangeViewReloadTest, readsItemsImagesAndNamesWhenItAppears) {
    appear();
    EXPECT_EQ(order(), (Order{11, 12, 13, 14}));
    EXPECT_TRUE(view->items()[0].isEaten);
    EXPECT_EQ(view->images().size(), 4U);
    EXPECT_EQ(view->names(), (ArrangeView::Names{{11, "Clock"}, {12, "Network"}, {14, "Sound"}}));
    EXPECT_FALSE(view->isWorking());
}

TEST_F(ArrangeViewReloadTest, capturesAllItemsInTheirOrder) {
    appear();
    Order captured;
    for (const auto& call : world.screenCapture.captures)
        captured.push_back(call.windowID);
    EXPECT_EQ(captured, (Order{11, 12, 13, 14}));
}

TEST_F(ArrangeViewReloadTest, withoutThePermissionItForgetsItsImagesAndCapturesNothing) {
    appear();
    world.screenCapture.accessGranted = false;
    world.screenCapture.captures.clear();
    run(view->reload());
    EXPECT_TRUE(view->images().empty());
    EXPECT_TRUE(world.screenCapture.captures.empty());
    EXPECT_EQ(view->names().size(), 3U);
}

TEST_F(ArrangeViewReloadTest, withoutThePermissionItReadsTheNamesAllTheSame) {
    world.screenCapture.accessGranted = false;
    appear();
    EXPECT_EQ(view->names(), (ArrangeView::Names{{11, "Clock"}, {12, "Network"}, {14, "Sound"}}));
}

TEST_F(ArrangeViewReloadTest, itCapturesWhatTheCensusFoundAndThenAsksOnceForTheOwners) {
    appear();
    const auto& journal = world.journal;
    EXPECT_LT(journal.firstIndex("allWindows"), journal.firstIndex("captureImage"));
    EXPECT_LT(journal.firstIndex("captureImage"), journal.firstIndex("runningApplications"));
    EXPECT_EQ(journal.count("allWindows"), 1U);
    EXPECT_EQ(journal.count("runningApplications"), 1U);
}

TEST_F(ArrangeViewReloadTest, theOldImagesAndNamesStayUntilTheNewOnesAreThere) {
    appear();
    const auto images = view->images();
    const auto names = view->names();
    world.screenCapture.captureReply = CaptureReply::later(0.5);
    world.windowList.remove(12);
    run(view->reload());
    EXPECT_EQ(order(), (Order{11, 13, 14}));
    EXPECT_EQ(view->images(), images);
    EXPECT_EQ(view->names(), names);
    world.loop.advance(0.51);
    EXPECT_EQ(view->images().size(), 3U);
    EXPECT_EQ(view->names(), (ArrangeView::Names{{11, "Clock"}, {14, "Sound"}}));
}

TEST_F(ArrangeViewReloadTest, aReloadForgetsTheNamesOfItemsThatAreGone) {
    appear();
    world.windowList.remove(12);
    run(view->reload());
    EXPECT_EQ(order(), (Order{11, 13, 14}));
    EXPECT_FALSE(view->names().contains(12));
    EXPECT_FALSE(view->images().contains(12));
}

TEST_F(ArrangeViewReloadTest, aReloadEndsADragBeforeItWaitsForImages) {
    appear();
    world.screenCapture.captureReply = CaptureReply::later(0.5);
    view->beginDrag(12);
    view->setInsertion(3);
    run(view->reload());
    EXPECT_FALSE(isDragging());
    view->setInsertion(1);
    world.loop.advance(1);
    EXPECT_EQ(view->insertionIndex(), 1);
}

TEST_F(ArrangeViewReloadTest, isWorkingFromTheBeginningOfARefreshToItsEnd) {
    world.screenCapture.captureReply = CaptureReply::later(0.5);
    run(view->refresh());
    EXPECT_TRUE(view->isWorking());
    world.loop.advance(0.49);
    EXPECT_TRUE(view->isWorking());
    world.loop.advance(0.02);
    EXPECT_FALSE(view->isWorking());
    EXPECT_EQ(order(), (Order{11, 12, 13, 14}));
}

TEST_F(ArrangeViewReloadTest, aSecondRefreshWhileOneIsRunningDoesNothing) {
    world.screenCapture.captureReply = CaptureReply::later(0.5);
    run(view->refresh());
    const auto censuses = world.journal.count("allWindows");
    run(view->refresh());
    EXPECT_EQ(world.journal.count("allWindows"), censuses);
    EXPECT_TRUE(view->isWorking());
}

TEST_F(ArrangeViewReloadTest, everyChangeIsAnnouncedBeforeItHappens) {
    std::vector<bool> working;
    std::vector<std::optional<std::uint32_t>> dragged;
    const auto observation = view->observe([&] {
        working.push_back(view->isWorking());
        dragged.push_back(view->draggingID());
    });
    view->beginDrag(12);
    EXPECT_EQ(dragged, (std::vector<std::optional<std::uint32_t>>{std::nullopt}));
    working.clear();
    run(view->refresh());
    EXPECT_FALSE(working.front());
    EXPECT_TRUE(working.back());
    EXPECT_FALSE(view->isWorking());
}

} // namespace
} // namespace orrivane
