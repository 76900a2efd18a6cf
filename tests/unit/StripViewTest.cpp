#include <Orrivane/StripView.h>

#include <tests/support/ScriptedImage.h>

#include <gtest/gtest.h>

namespace orrivane {
namespace {

StripItem item(std::uint32_t id, double width, std::optional<Image> image = std::nullopt) {
    return {id, std::move(image), width, "App " + std::to_string(id), [] {}, nullptr};
}

const HorizontalStack& row(const View& view) {
    return std::get<HorizontalStack>(view.node);
}
const Button& button(const View& view, std::size_t index) {
    return std::get<Button>(row(view).children.at(index).node);
}

TEST(StripView, isARowWithoutSpacingKeyedByWindow) {
    const auto view = StripView{{item(5, 22), item(3, 30)}, 37}.body();
    EXPECT_EQ(row(view).spacing, 0);
    EXPECT_EQ(row(view).alignment, Alignment::center);
    ASSERT_EQ(row(view).children.size(), 2U);
    EXPECT_EQ(row(view).children[0].key, 5U);
    EXPECT_EQ(row(view).children[1].key, 3U);
    EXPECT_EQ(button(view, 1).style, ButtonStyle::plain);
}

TEST(StripView, aCellIsExactlyAsWideAsItsItemAndAsHighAsTheBar) {
    const auto view = StripView{{item(1, 22.5)}, 37}.body();
    EXPECT_EQ(button(view, 0).label.size, (Size{22.5, 37}));
    const auto& clip = std::get<ClipRectangle>(button(view, 0).label.primitives.at(0));
    EXPECT_EQ(clip, (ClipRectangle{{{0, 0}, {22.5, 37}}, false}));
}

TEST(StripView, anImageFillsTheWholeCellAtTwoPixelsAPoint) {
    const auto image = ScriptedImage::make(44, 74);
    const auto view = StripView{{item(1, 22, image)}, 37}.body();
    EXPECT_EQ(std::get<DrawnImage>(button(view, 0).label.primitives.at(1)),
              (DrawnImage{{{0, 0}, {22, 37}}, image, 2.0, ContentMode::fill}));
}

TEST(StripView, withoutImageThereIsAPlaceholderInsetBySix) {
    const auto view = StripView{{item(1, 22)}, 37}.body();
    EXPECT_EQ(std::get<RoundedRectangle>(button(view, 0).label.primitives.at(1)),
              (RoundedRectangle{
                  {{6, 6}, {10, 25}}, 4, CornerStyle::continuous, ColorRole::secondary, 0.4}));
}

TEST(StripView, aCellTooSmallForThePlaceholderStaysEmpty) {
    const auto view = StripView{{item(1, 12)}, 37}.body();
    EXPECT_EQ(button(view, 0).label.primitives.size(), 1U);
    const auto low = StripView{{item(1, 22)}, 12}.body();
    EXPECT_EQ(button(low, 0).label.primitives.size(), 1U);
}

TEST(StripView, theNameIsTooltipAndAccessibleNameAndTheImageHasNone) {
    const auto view = StripView{{item(9, 22)}, 37}.body();
    EXPECT_EQ(row(view).children[0].tooltip, "App 9");
    EXPECT_EQ(row(view).children[0].accessibilityName, "App 9");
}

TEST(StripView, aClickRunsTheItemsAction) {
    int presses = 0;
    int secondaries = 0;
    auto pressed = item(1, 22);
    pressed.onPress = [&] { ++presses; };
    pressed.onSecondaryPress = [&] { ++secondaries; };
    const auto view = StripView{{pressed}, 37}.body();
    button(view, 0).action.run();
    EXPECT_EQ(presses, 1);
    EXPECT_EQ(secondaries, 0);
    button(view, 0).secondaryAction.run();
    EXPECT_EQ(secondaries, 1);
}

TEST(StripView, viewsOfTheSameItemsAreEqualWhateverTheirActionsDo) {
    const auto image = ScriptedImage::make(44, 74);
    const auto one = StripView{{item(1, 22, image)}, 37}.body();
    auto other = item(1, 22, image);
    other.onPress = nullptr;
    EXPECT_EQ(one, (StripView{{other}, 37}.body()));
    other.width = 23;
    EXPECT_NE(one, (StripView{{other}, 37}.body()));
    EXPECT_NE(one, (StripView{{item(1, 22, ScriptedImage::make(44, 74))}, 37}.body()));
}

} // namespace
} // namespace orrivane
