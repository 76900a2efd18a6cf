#include <macos/view/RowWidths.h>

#include <gtest/gtest.h>

#include <numeric>
#include <vector>

namespace orrivane {
namespace {

using Widths = std::vector<double>;

constexpr RowChild rigid(double natural) {
    return {natural, false, false};
}
constexpr RowChild text(double natural) {
    return {natural, false, true};
}
constexpr RowChild spacer(double least = 0) {
    return {least, true, false};
}

TEST(RowWidthsTest, everyChildHasItsNaturalWidthWhereThereIsRoom) {
    const std::vector<RowChild> row{rigid(40), text(100)};
    EXPECT_EQ(rowWidths(row, 300), (Widths{40, 100}));
}

TEST(RowWidthsTest, aSpacerTakesWhatIsLeft) {
    const std::vector<RowChild> row{text(100), spacer(), rigid(50)};
    EXPECT_EQ(rowWidths(row, 400), (Widths{100, 250, 50}));
}

TEST(RowWidthsTest, spacersShareWhatIsLeftBeyondTheirLeastLengths) {
    const std::vector<RowChild> row{spacer(10), rigid(30), spacer(20)};
    EXPECT_EQ(rowWidths(row, 100), (Widths{30, 30, 40}));
}

TEST(RowWidthsTest, textAloneGivesUpWhatIsMissing) {
    const std::vector<RowChild> row{rigid(20), text(300), spacer(8), rigid(50)};
    EXPECT_EQ(rowWidths(row, 200), (Widths{20, 122, 8, 50}));
}

TEST(RowWidthsTest, shortTextStaysWholeBesideLongText) {
    const std::vector<RowChild> row{text(300), text(20), text(80)};
    EXPECT_EQ(rowWidths(row, 150), (Widths{65, 20, 65}));
}

TEST(RowWidthsTest, theOrderOfTextsDoesNotMatter) {
    EXPECT_EQ(rowWidths(std::vector{text(80), text(300), text(20)}, 150), (Widths{65, 65, 20}));
}

TEST(RowWidthsTest, textGetsNothingWhereTheOthersTakeMoreThanThereIs) {
    const std::vector<RowChild> row{rigid(300), text(20)};
    EXPECT_EQ(rowWidths(row, 200), (Widths{300, 0}));
}

TEST(RowWidthsTest, anEmptyRowHasNoWidths) {
    EXPECT_TRUE(rowWidths({}, 100).empty());
}

TEST(RowWidthsTest, aRowWithTextAndASpacerIsFilledExactly) {
    for (double available = 60; available <= 500; available += 20) {
        const std::vector<RowChild> row{rigid(60), text(130), spacer(), text(90)};
        const auto widths = rowWidths(row, available);
        EXPECT_DOUBLE_EQ(std::accumulate(widths.begin(), widths.end(), 0.0), available);
    }
}

} // namespace
} // namespace orrivane
