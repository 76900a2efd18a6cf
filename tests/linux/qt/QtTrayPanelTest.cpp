#include "support/StripFixture.h"

#include <algorithm>
#include <ostream>

namespace orrivane {

namespace {

class QtTrayPanelTest : public StripFixture {
  protected:
    View two() { return row({cell(1, 22, "A", first), cell(2, 30, "B", second)}); }
    [[nodiscard]] auto count(const char* call) const {
        return std::ranges::count(stage.calls, std::string(call));
    }
    QRgb pixel(int x, int y) {
        return *(reinterpret_cast<const QRgb*>(strip().picture().constScanLine(y)) + x);
    }
    void answer(std::size_t question, QRgb color) {
        const auto& asked = stage.questions.at(question);
        asked.answer(plainPicture(asked.rect.width, asked.rect.height, color));
    }

    std::shared_ptr<const PixelImage> first = plainPicture(44, 74, 0xffff0000);
    std::shared_ptr<const PixelImage> second = plainPicture(60, 74, 0xff0000ff);
};

struct TilingRow {
    double scale;
    double right;
    std::vector<double> widths;
};

void PrintTo(const TilingRow& row, std::ostream* stream) {
    *stream << row.widths.size() << " cells at " << row.scale << " up to " << row.right;
}

class Tiling : public StripFixture, public ::testing::WithParamInterface<TilingRow> {};

} // namespace

TEST_P(Tiling, cellsCoverThePanelWithoutGapOrOverlap) {
    const auto& tiling = GetParam();
    stage.pixelsAPoint = tiling.scale;
    std::vector<View> cells;
    for (const double width : tiling.widths)
        cells.push_back(cell(static_cast<std::uint32_t>(cells.size() + 1), width, "name"));
    show(row(cells), tiling.right);
    ASSERT_EQ(strip().cells().size(), tiling.widths.size());
    const auto place = stage.places.back();
    int edge = 0;
    for (std::size_t i = 0; i < tiling.widths.size(); ++i) {
        const auto pixels = strip().cells()[i].pixels;
        EXPECT_EQ(pixels.left(), edge);
        EXPECT_EQ(pixels.top(), 0);
        EXPECT_EQ(pixels.height(), place.height);
        EXPECT_NEAR(pixels.width(), tiling.widths[i] * tiling.scale, 1);
        edge += pixels.width();
    }
    EXPECT_EQ(edge, place.width);
}

INSTANTIATE_TEST_SUITE_P(
    Scales, Tiling,
    ::testing::Values(TilingRow{1, 694, {22, 30, 18}}, TilingRow{1, 694.5, {22, 30, 18}},
                      TilingRow{1, 633.3, {22.3, 30.1, 18.7, 21}},
                      TilingRow{1.5, 694, {22, 30, 18}}, TilingRow{1.5, 694, {23, 23, 23, 23}},
                      TilingRow{1.5, 693, {21, 23.5, 25, 1, 0.2}},
                      TilingRow{1.25, 693, {21, 23.5, 25, 1}}, TilingRow{2, 694, {22, 30, 18}},
                      TilingRow{2, 694.25, {22.5, 30, 18}}));

TEST_F(QtTrayPanelTest, theWindowIsInItsPlaceBeforeItIsSeen) {
    panel.setRoot(two());
    panel.setFrame({{648, 945}, {52, 37}});
    EXPECT_TRUE(stage.calls.empty());
    panel.orderFrontRegardless();
    ASSERT_GE(stage.calls.size(), 2U);
    EXPECT_EQ(stage.calls[0], "adopt");
    EXPECT_EQ(stage.calls[1], "place");
    EXPECT_EQ(stage.places.back(), (PixelRect{648, 18, 52, 37}));
    EXPECT_TRUE(strip().isVisible());
}

TEST_F(QtTrayPanelTest, anIdleTickAsksTheServerForNothing) {
    show(two());
    pumpQueued();
    stage.calls.clear();
    const auto key = strip().picture().cacheKey();
    show(two());
    pumpQueued();
    EXPECT_TRUE(stage.calls.empty());
    EXPECT_EQ(strip().picture().cacheKey(), key);
}

TEST_F(QtTrayPanelTest, aNewPictureIsDrawnOnANextTurnWithoutBeingAskedFor) {
    show(two());
    pumpQueued();
    const auto key = strip().picture().cacheKey();
    auto changed = row({cell(1, 22, "A", first), cell(2, 30, "B", first)});
    panel.setRoot(changed);
    pumpQueued();
    EXPECT_NE(strip().picture().cacheKey(), key);
    EXPECT_EQ(pixel(40, 10), 0xffff0000);
}

TEST_F(QtTrayPanelTest, aChangedFrameMovesTheWindow) {
    show(two());
    stage.calls.clear();
    show(row({cell(2, 30, "B", second)}));
    EXPECT_EQ(count("place"), 1);
    EXPECT_EQ(count("adopt"), 0);
    EXPECT_EQ(stage.places.back(), (PixelRect{670, 18, 30, 37}));
    EXPECT_EQ(strip().picture().size(), QSize(30, 37));
    EXPECT_EQ(pixel(0, 0), 0xff0000ff);
}

TEST_F(QtTrayPanelTest, aPanelThatIsOrderedOutIsGoneAndComesBack) {
    show(two());
    panel.orderOut();
    EXPECT_FALSE(strip().isVisible());
    panel.orderFrontRegardless();
    EXPECT_TRUE(strip().isVisible());
    EXPECT_EQ(count("adopt"), 1);
    EXPECT_EQ(count("place"), 2);
}

TEST_F(QtTrayPanelTest, aCoveredDockKeepsThePanelAwayAsLongAsItIsCovered) {
    stage.covered = true;
    show(two());
    EXPECT_FALSE(strip().isVisible());
    stage.covered = false;
    stage.change();
    EXPECT_TRUE(strip().isVisible());
    stage.covered = true;
    stage.change();
    EXPECT_FALSE(strip().isVisible());
    panel.orderOut();
    stage.covered = false;
    stage.change();
    EXPECT_FALSE(strip().isVisible());
}

TEST_F(QtTrayPanelTest, aChangeInTheStackPutsThePanelBackInItsPlace) {
    show(two());
    stage.calls.clear();
    stage.change();
    EXPECT_EQ(count("place"), 1);
}

TEST_F(QtTrayPanelTest, aChangedScaleLaysThePanelOutAnew) {
    show(two());
    stage.pixelsAPoint = 2;
    stage.change();
    EXPECT_EQ(stage.places.back(), stage.pixels({{648, 945}, {52, 37}}));
    EXPECT_EQ(strip().picture().size(), QSize(104, 74));
    EXPECT_EQ(strip().cells()[1].pixels, QRect(44, 0, 60, 74));
}

TEST_F(QtTrayPanelTest, anEmptyPanelIsNotShown) {
    panel.setRoot(row({}));
    panel.setFrame({{694, 945}, {0, 37}});
    panel.orderFrontRegardless();
    EXPECT_FALSE(strip().isVisible());
    EXPECT_EQ(count("place"), 0);
    show(two());
    EXPECT_TRUE(strip().isVisible());
}

TEST_F(QtTrayPanelTest, underACompositorTheGroundIsTransparent) {
    show(row({cell(1, 22, "A")}));
    EXPECT_EQ(count("backdrop"), 0);
    EXPECT_EQ(pixel(3, 3), 0U);
}

TEST_F(QtTrayPanelTest, withoutACompositorTheGroundIsWhatTheDockShows) {
    stage.composited = false;
    show(row({cell(1, 22, "A"), cell(2, 30, "B", second)}));
    ASSERT_EQ(stage.questions.size(), 1U);
    EXPECT_EQ(stage.questions[0].rect, stage.places.back());
    answer(0, 0x00102030);
    EXPECT_EQ(pixel(3, 3), 0xff102030);
    EXPECT_EQ(pixel(40, 3), 0xff0000ff);
}

TEST_F(QtTrayPanelTest, aDockThatCannotBeReadLeavesTheWindowColour) {
    stage.composited = false;
    show(row({cell(1, 22, "A")}));
    ASSERT_EQ(stage.questions.size(), 1U);
    stage.questions[0].answer(nullptr);
    EXPECT_EQ(pixel(3, 3), strip().palette().color(QPalette::Window).rgba());
}

TEST_F(QtTrayPanelTest, theGroundIsReadAnewForNewPicturesAndFramesOnly) {
    stage.composited = false;
    show(two());
    show(two());
    EXPECT_EQ(count("backdrop"), 1);
    second = plainPicture(60, 74, 0xff00ff00);
    show(two());
    EXPECT_EQ(count("backdrop"), 2);
    show(two(), 650);
    EXPECT_EQ(count("backdrop"), 3);
    // A cell that goes brings nothing new; the frame that goes with it does.
    panel.setRoot(row({cell(1, 22, "A", first)}));
    panel.orderFrontRegardless();
    EXPECT_EQ(count("backdrop"), 3);
}

TEST_F(QtTrayPanelTest, anAnswerAboutAnEarlierPlaceIsNotUsed) {
    stage.composited = false;
    show(row({cell(1, 22, "A")}));
    show(row({cell(1, 22, "A")}), 650);
    ASSERT_EQ(stage.questions.size(), 2U);
    answer(1, 0xff102030);
    answer(0, 0xff405060);
    EXPECT_EQ(pixel(3, 3), 0xff102030);
}

TEST_F(QtTrayPanelTest, aCompositorThatComesAndGoesIsFollowed) {
    stage.composited = false;
    show(row({cell(1, 22, "A")}));
    answer(0, 0xff102030);
    stage.composited = true;
    stage.change();
    EXPECT_EQ(pixel(3, 3), 0U);
    stage.composited = false;
    stage.change();
    answer(1, 0xff405060);
    EXPECT_EQ(pixel(3, 3), 0xff405060);
}

TEST_F(QtTrayPanelTest, anAnswerAfterThePanelsEndIsHarmless) {
    FakePanelStage::Question question;
    {
        FakePanelStage other;
        other.composited = false;
        QtTrayPanel ended(other);
        ended.create({});
        ended.setRoot(row({cell(1, 22, "A")}));
        ended.setFrame({{600, 945}, {22, 37}});
        ended.orderFrontRegardless();
        ASSERT_EQ(other.questions.size(), 1U);
        question = other.questions[0];
    }
    question.answer(plainPicture(22, 37, 0xff000000));
    EXPECT_EQ(clicks, Clicks{});
}

TEST_F(QtTrayPanelTest, aPlaceholderOnADarkDockIsLight) {
    stage.composited = false;
    auto view = row({cell(1, 22, "A")});
    auto& label = std::get<Button>(std::get<HorizontalStack>(view.node).children[0].node).label;
    label.primitives.emplace_back(RoundedRectangle{
        {{6, 6}, {10, 25}}, 4, CornerStyle::continuous, ColorRole::secondary, 0.4});
    show(view);
    answer(0, 0xff202020);
    EXPECT_GT(qRed(pixel(11, 18)), 0x20);
    show(view, 650);
    answer(1, 0xffe0e0e0);
    EXPECT_LT(qRed(pixel(11, 18)), 0xe0);
}

TEST_F(QtTrayPanelTest, statusItemsHaveTheLevelOfTheMenuBarsStatusItems) {
    EXPECT_EQ(panel.windowLevelForKey(9), 25);
}

} // namespace orrivane
