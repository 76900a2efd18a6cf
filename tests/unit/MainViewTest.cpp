#include <Orrivane/MainView.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>

namespace orrivane {
namespace {

/// A census of a notched screen with `eaten` hidden items and three visible ones.
CensusResult censusWithEaten(int eaten) {
    CensusResult census{.notch = NotchInfo{}, .items = {}};
    for (int i = 0; i < eaten + 3; ++i)
        census.items.push_back(
            {.id = static_cast<std::uint32_t>(i + 1), .frame = {}, .isEaten = i < eaten});
    return census;
}

void expectRow(const DiagnosticRow& row, const std::string& text, const std::string& symbol,
               ColorRole color) {
    EXPECT_EQ(row.text, text);
    EXPECT_EQ(row.symbol, symbol);
    EXPECT_EQ(row.color, color) << text;
}

void expectOneRow(const DiagnosticLine& line, const std::string& text, const std::string& symbol,
                  ColorRole color) {
    ASSERT_EQ(line.rows.size(), 1U);
    expectRow(line.rows[0], text, symbol, color);
}

TEST(MainViewTest, beforeTheFirstCensusTheLineSaysThatItIsScanning) {
    expectOneRow(MainView::diagnosticLine(std::nullopt, 0), "Scanning the menu bar…",
                 "ellipsis.circle", ColorRole::secondary);
}

TEST(MainViewTest, withoutANotchTheLineSaysSoWhateverTheStripShows) {
    CensusResult census = censusWithEaten(2);
    census.notch.reset();
    expectOneRow(MainView::diagnosticLine(census, 1), "No notch detected", "checkmark.circle",
                 ColorRole::green);
}

TEST(MainViewTest, withNothingEatenAllIconsAreVisible) {
    for (const int mirrored : {0, 2})
        expectOneRow(MainView::diagnosticLine(censusWithEaten(0), mirrored),
                     "All menu bar icons are visible", "checkmark.circle", ColorRole::green);
}

TEST(MainViewTest, oneEatenAndNoneMirroredIsOneIconInRed) {
    for (const int mirrored : {0, -1})
        expectOneRow(MainView::diagnosticLine(censusWithEaten(1), mirrored),
                     "The notch is hiding 1 icon", "exclamationmark.triangle", ColorRole::red);
}

TEST(MainViewTest, severalEatenAndNoneMirroredAreIconsInRed) {
    expectOneRow(MainView::diagnosticLine(censusWithEaten(12), 0), "The notch is hiding 12 icons",
                 "exclamationmark.triangle", ColorRole::red);
}

TEST(MainViewTest, fiveEatenAndThreeMirroredLeaveTwoInASecondRow) {
    const DiagnosticLine line = MainView::diagnosticLine(censusWithEaten(5), 3);
    ASSERT_EQ(line.rows.size(), 2U);
    expectRow(line.rows[0], "The notch is hiding 5 icons — Orrivane is showing 3",
              "checkmark.circle", ColorRole::green);
    expectRow(line.rows[1], "2 icons are not shown anywhere", "exclamationmark.triangle",
              ColorRole::red);
}

TEST(MainViewTest, twoEatenAndOneMirroredLeaveOneIconInTheSingular) {
    const DiagnosticLine line = MainView::diagnosticLine(censusWithEaten(2), 1);
    ASSERT_EQ(line.rows.size(), 2U);
    expectRow(line.rows[0], "The notch is hiding 2 icons — Orrivane is showing 1",
              "checkmark.circle", ColorRole::green);
    expectRow(line.rows[1], "1 icon is not shown anywhere", "exclamationmark.triangle",
              ColorRole::red);
}

TEST(MainViewTest, fourEatenAndFourMirroredAreAllShown) {
    expectOneRow(MainView::diagnosticLine(censusWithEaten(4), 4),
                 "The notch is hiding 4 icons — Orrivane is showing all of them",
                 "checkmark.circle", ColorRole::green);
}

TEST(MainViewTest, fourEatenAndSixReportedMirroredAreAllShown) {
    expectOneRow(MainView::diagnosticLine(censusWithEaten(4), 6),
                 "The notch is hiding 4 icons — Orrivane is showing all of them",
                 "checkmark.circle", ColorRole::green);
}

TEST(MainViewTest, oneEatenAndMirroredIsAllOfThemInTheSingular) {
    expectOneRow(MainView::diagnosticLine(censusWithEaten(1), 1),
                 "The notch is hiding 1 icon — Orrivane is showing all of them", "checkmark.circle",
                 ColorRole::green);
}

TEST(MainViewTest, theVerdictIsThatAllFitWhenNothingWouldBeHidden) {
    EXPECT_EQ(MainView::projectedVerdict(0), "→ all icons would fit");
}

TEST(MainViewTest, theVerdictCountsTheIconsThatWouldBeHidden) {
    EXPECT_EQ(MainView::projectedVerdict(1), "→ would hide 1 icon");
    EXPECT_EQ(MainView::projectedVerdict(2), "→ would hide 2 icons");
    EXPECT_EQ(MainView::projectedVerdict(21), "→ would hide 21 icons");
}

} // namespace
} // namespace orrivane
