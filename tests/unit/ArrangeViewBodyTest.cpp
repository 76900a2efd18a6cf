#include <tests/support/ScriptedImage.h>
#include <tests/support/ViewReading.h>
#include <tests/unit/ArrangeFixture.h>

namespace orrivane {
namespace {

using namespace reading;

constexpr auto refreshTip = "Refresh the icon list";
constexpr auto heading =
    "Same order as your menu bar. Drag an icon — the line shows exactly where it will land.";
constexpr auto explanation =
    "Moves use a simulated ⌘-drag on the real menu bar. Icons hidden under the notch (orange dot) "
    "may not respond — drag a visible icon left of them instead.";

struct ArrangeViewBodyTest : ArrangeFixture {
    View root;

    void appear() {
        ArrangeFixture::appear();
        root = view->body();
    }
    std::vector<const View*> tiles() { return all<Tile>(root); }
    const Tile& tile(std::size_t index) { return std::get<Tile>(tiles().at(index)->node); }
    const std::vector<Primitive>& drawn(std::size_t index) {
        return tile(index).content.primitives;
    }
    const View& refreshButton() { return *all<Button>(root).at(0); }
};

RoundedRectangle line(double x) {
    return {{{x, 0}, {2, 30}}, 1, CornerStyle::circular, ColorRole::accent, 1};
}

TEST_F(ArrangeViewBodyTest, isAHeaderTheStripAndAFooter) {
    appear();
    EXPECT_EQ(shownWords(root), (std::vector<std::string>{heading, explanation}));
    const auto& column = std::get<VerticalStack>(root.node).children;
    EXPECT_TRUE(std::holds_alternative<HorizontalStack>(column.at(0).node));
    EXPECT_TRUE(std::holds_alternative<HorizontalScroll>(column.at(1).node));
    EXPECT_TRUE(std::holds_alternative<HorizontalStack>(column.at(2).node));
}

TEST_F(ArrangeViewBodyTest, theHeaderEndsWithASpinnerWhileItIsWorking) {
    appear();
    const auto& row =
        std::get<HorizontalStack>(std::get<VerticalStack>(root.node).children[0].node);
    EXPECT_EQ(row.spacing, 6);
    EXPECT_EQ(row.alignment, Alignment::center);
    ASSERT_EQ(row.children.size(), 3U);
    EXPECT_EQ(row.children[0].font, FontRole::smallestCaption);
    EXPECT_EQ(row.children[0].color, ColorRole::secondary);
    EXPECT_TRUE(std::holds_alternative<Spacer>(row.children[1].node));
    EXPECT_TRUE(std::holds_alternative<Spinner>(row.children[2].node));
    EXPECT_FALSE(row.children[2].isVisible);
    dragAndDrop(12, 4);
    root = view->body();
    EXPECT_TRUE(all<Spinner>(root).at(0)->isVisible);
}

TEST_F(ArrangeViewBodyTest, theFooterHasARefreshButtonThatIsDisabledWhileWorking) {
    appear();
    const auto& row =
        std::get<HorizontalStack>(std::get<VerticalStack>(root.node).children[2].node);
    EXPECT_EQ(row.spacing, 6);
    EXPECT_EQ(row.alignment, Alignment::top);
    EXPECT_EQ(row.children.at(0).font, FontRole::footnote);
    EXPECT_EQ(row.children.at(0).color, ColorRole::secondary);
    EXPECT_TRUE(std::get<Text>(row.children.at(0).node).wraps);
    const auto& button = std::get<Button>(refreshButton().node);
    EXPECT_EQ(button.style, ButtonStyle::borderless);
    EXPECT_EQ(button.symbol, "arrow.clockwise");
    EXPECT_EQ(button.title, "");
    EXPECT_EQ(refreshButton().tooltip, refreshTip);
    EXPECT_EQ(refreshButton().accessibilityName, refreshTip);
    EXPECT_TRUE(refreshButton().isEnabled);
    dragAndDrop(12, 4);
    root = view->body();
    EXPECT_FALSE(refreshButton().isEnabled);
}

TEST_F(ArrangeViewBodyTest, theRefreshButtonReadsTheBarAgain) {
    appear();
    world.windowList.remove(12);
    std::get<Button>(refreshButton().node).action.run();
    EXPECT_EQ(view->items().size(), 4U);
    world.loop.runUntilIdle();
    EXPECT_EQ(view->items().size(), 3U);
}

TEST_F(ArrangeViewBodyTest, theStripLiesOnARoundedDarkGroundWithMoreRoomBelow) {
    appear();
    const auto& strip = std::get<VerticalStack>(root.node).children.at(1);
    EXPECT_EQ(strip.background, (Background{ColorRole::black, 0.25, 8, CornerStyle::continuous}));
    EXPECT_TRUE(strip.frame.fillsWidth);
    EXPECT_TRUE(strip.isEnabled);
    const auto& row = std::get<HorizontalScroll>(strip.node).children.at(0);
    EXPECT_EQ(row.padding, (Insets{.top = 4, .bottom = 12}));
    EXPECT_EQ(std::get<HorizontalStack>(row.node).children.size(), 4U);
}

TEST_F(ArrangeViewBodyTest, tilesAreKeyedByWindowInMenuBarOrderAndAsWideAsTheItems) {
    appear();
    ASSERT_EQ(tiles().size(), 4U);
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(tiles()[i]->key, 11 + i);
        EXPECT_EQ(tile(i).content.size, (Size{view->items()[i].frame.width(), 30}));
        EXPECT_EQ(tile(i).source.payload, std::to_string(11 + i));
    }
}

TEST_F(ArrangeViewBodyTest, aTileShowsItsImageFittedAtTwoPixelsAPoint) {
    const auto image = ScriptedImage::make(60, 74);
    world.screenCapture.images.insert_or_assign(12, image);
    appear();
    EXPECT_EQ(drawn(1),
              (std::vector<Primitive>{DrawnImage{{{0, 0}, {30, 30}}, image, 2, ContentMode::fit}}));
    EXPECT_EQ(tile(1).content.accessibilityName, "");
}

TEST_F(ArrangeViewBodyTest, withoutAnImageATileIsAGreyPlaceholderInsetBy4) {
    world.screenCapture.accessGranted = false;
    appear();
    EXPECT_EQ(drawn(1),
              (std::vector<Primitive>{RoundedRectangle{
                  {{4, 4}, {22, 22}}, 5, CornerStyle::continuous, ColorRole::gray, 0.25}}));
}

TEST_F(ArrangeViewBodyTest, aTileNarrowerThanItsInsetsHasAPlaceholderOfNoWidth) {
    world.screenCapture.accessGranted = false;
    addItem(15, 1100, 6, "");
    appear();
    EXPECT_EQ(std::get<RoundedRectangle>(drawn(4).at(0)).rect.width(), 0);
}

TEST_F(ArrangeViewBodyTest, anEatenItemHasAnOrangeDotAtItsBottomCentre) {
    appear();
    ASSERT_EQ(drawn(0).size(), 2U);
    EXPECT_EQ(std::get<Oval>(drawn(0)[1]), (Oval{{{10, 26}, {4, 4}}, ColorRole::orange, 1}));
}

TEST_F(ArrangeViewBodyTest, theDraggedTileIsDimmedAndNoOther) {
    appear();
    view->beginDrag(11);
    root = view->body();
    EXPECT_EQ(std::get<Group>(drawn(0).at(0)), (Group{0.4, 1}));
    EXPECT_EQ(std::get<Oval>(drawn(0).at(2)).opacity, 1);
    for (std::size_t i = 1; i < 4; ++i)
        EXPECT_EQ(drawn(i).size(), 1U);
}

TEST_F(ArrangeViewBodyTest, theLineStandsAtTheLeadingEdgeOfTheTileRightOfTheGap) {
    appear();
    view->setInsertion(2);
    root = view->body();
    EXPECT_EQ(std::get<RoundedRectangle>(drawn(2).back()), line(0));
    EXPECT_EQ(drawn(0).size(), 2U);
    EXPECT_EQ(drawn(1).size(), 1U);
    EXPECT_EQ(drawn(3).size(), 1U);
}

TEST_F(ArrangeViewBodyTest, theDraggedTileShowsTheLineUndimmedToo) {
    appear();
    view->beginDrag(13);
    view->setInsertion(2);
    root = view->body();
    ASSERT_EQ(drawn(2).size(), 3U);
    EXPECT_EQ(std::get<Group>(drawn(2)[0]), (Group{0.4, 1}));
    EXPECT_EQ(std::get<RoundedRectangle>(drawn(2)[2]), line(0));
}

TEST_F(ArrangeViewBodyTest, theLineAfterTheLastTileStandsAtItsTrailingEdge) {
    appear();
    view->setInsertion(4);
    root = view->body();
    EXPECT_EQ(std::get<RoundedRectangle>(drawn(3).back()), line(20));
    EXPECT_EQ(drawn(2).size(), 1U);
}

TEST_F(ArrangeViewBodyTest, aTooltipNamesTheOwnerAndSaysWhatIsHidden) {
    appear();
    EXPECT_EQ(tiles()[0]->tooltip, "Clock (hidden under the notch)");
    EXPECT_EQ(tiles()[1]->tooltip, "Network");
    EXPECT_EQ(tiles()[2]->tooltip, "Unknown");
    EXPECT_EQ(tiles()[1]->accessibilityName, "Network");
}

TEST_F(ArrangeViewBodyTest, aHiddenItemWithoutAnOwnerIsUnknownAndHidden) {
    world.accessibility.trusted = false;
    world.accessibility.quit(111);
    appear();
    EXPECT_EQ(tiles()[0]->tooltip, "Unknown (hidden under the notch)");
}

TEST_F(ArrangeViewBodyTest, anOwnerThatIsCalledNothingIsNotUnknown) {
    world.accessibility.addApplication(113, "");
    world.accessibility.addStatusItem(113, {{940, 0}, {40, 37}});
    appear();
    EXPECT_EQ(view->names().at(13), "");
    EXPECT_EQ(tiles()[2]->tooltip, "");
}

TEST_F(ArrangeViewBodyTest, theTilesTakePartInADragFromBeginningToEnd) {
    appear();
    tile(1).source.began.run();
    EXPECT_EQ(view->draggingID(), 12U);
    tile(3).target.updated.run(10.9);
    EXPECT_EQ(view->insertionIndex(), 3);
    tile(3).target.updated.run(11);
    EXPECT_EQ(view->insertionIndex(), 4);
    EXPECT_TRUE(tile(3).target.performed.run());
    tile(1).source.ended.run();
    world.loop.runUntilIdle();
    ASSERT_EQ(moves.size(), 1U);
    EXPECT_EQ(moves[0].item.id, 12U);
    EXPECT_EQ(moves[0].toX, 1013);
}

TEST_F(ArrangeViewBodyTest, theTilesAreMovedByStepsToo) {
    appear();
    tile(3).stepped.run(-1);
    EXPECT_EQ(view->draggingID(), 14U);
    EXPECT_EQ(view->insertionIndex(), 2);
    EXPECT_TRUE(tile(3).target.performed.run());
    tile(3).source.ended.run();
    world.loop.runUntilIdle();
    ASSERT_EQ(moves.size(), 1U);
    EXPECT_EQ(moves[0].item.id, 14U);
    EXPECT_EQ(moves[0].toX, 939);
}

TEST_F(ArrangeViewBodyTest, leavingATileTakesItsLineAway) {
    appear();
    tile(2).target.updated.run(0);
    tile(0).target.exited.run();
    EXPECT_EQ(view->insertionIndex(), 2);
    tile(2).target.exited.run();
    EXPECT_EQ(view->insertionIndex(), std::nullopt);
}

TEST_F(ArrangeViewBodyTest, actionsOfAViewThatIsGoneDoNothing) {
    appear();
    view.reset();
    tile(1).source.began.run();
    tile(1).stepped.run(1);
    tile(1).target.updated.run(3);
    EXPECT_FALSE(tile(1).target.performed.run());
    tile(1).source.ended.run();
    std::get<Button>(refreshButton().node).action.run();
    world.loop.advance(2);
    EXPECT_TRUE(moves.empty());
}

TEST_F(ArrangeViewBodyTest, whereNothingCanBeMovedItSaysSoAndTheTilesAreDisabled) {
    limitation = "This tray keeps its own order.";
    appear();
    EXPECT_TRUE(isShown<Text>(root, limitation));
    EXPECT_FALSE(std::get<VerticalStack>(root.node).children.at(1).isEnabled);
    EXPECT_TRUE(refreshButton().isEnabled);
    limitation.clear();
    run(view->refresh());
    EXPECT_EQ(shownWords(view->body()).size(), 2U);
}

TEST_F(ArrangeViewBodyTest, keepsItsShapeWhateverItsState) {
    const auto shape = [](const View& screen) {
        std::vector<std::size_t> kinds;
        for (const auto* each : everything(screen))
            if (!std::holds_alternative<Tile>(each->node))
                kinds.push_back(each->node.index());
        return kinds;
    };
    const auto before = shape(view->body());
    limitation = "This tray keeps its own order.";
    appear();
    EXPECT_EQ(shape(root), before);
    dragAndDrop(12, 4);
    EXPECT_EQ(shape(view->body()), before);
}

} // namespace
} // namespace orrivane
