#include <Orrivane/ExtrasBar.h>

#include <tests/support/ScriptedAccessibility.h>
#include <tests/support/VirtualLoop.h>

#include <gtest/gtest.h>

namespace orrivane {
namespace {

struct ExtrasBarTest : testing::Test {
    VirtualLoop loop;
    ScriptedAccessibility accessibility;

    ExtrasBarTest() { accessibility.clock = &loop; }
    std::vector<ExtrasBar> read() { return ExtrasBar::readAll(accessibility, loop); }
    void addApplication(std::int32_t process, const std::string& name) {
        const auto element = accessibility.addApplication(process, name);
        accessibility.setAttribute(element, "AXRole", std::string("AXApplication"));
    }
};

TEST_F(ExtrasBarTest, everyChildIsThereWithRoleAndFrame) {
    addApplication(7, "Mixer");
    const auto first = accessibility.addStatusItem(7, {{700, 0}, {30, 37}});
    accessibility.setAttribute(first, "AXRole", std::string("AXMenuBarItem"));
    const auto second = accessibility.addStatusItem(7, {});
    accessibility.removeAttribute(second, "AXFrame");
    const auto bars = read();
    ASSERT_EQ(bars.size(), 1U);
    EXPECT_EQ(bars[0],
              (ExtrasBar{"Mixer",
                         7,
                         true,
                         true,
                         0,
                         2,
                         {{"AXMenuBarItem", Rect{{700, 0}, {30, 37}}}, {"", std::nullopt}}}));
}

TEST_F(ExtrasBarTest, aFrameIsReadFromPositionAndSizeAsTheTrayDoes) {
    addApplication(7, "Mixer");
    for (const double x : {700.0, 730.0}) {
        const auto item = accessibility.addStatusItem(7, {});
        accessibility.removeAttribute(item, "AXFrame");
        accessibility.setAttribute(item, "AXPosition", Point{x, 0});
        accessibility.setAttribute(item, "AXSize", Size{30, 37});
        if (x == 730)
            accessibility.removeAttribute(item, "AXSize");
    }
    const auto bars = read();
    ASSERT_EQ(bars.size(), 1U);
    ASSERT_EQ(bars[0].children.size(), 2U);
    EXPECT_EQ(bars[0].children[0].frame, (Rect{{700, 0}, {30, 37}}));
    EXPECT_EQ(bars[0].children[1].frame, std::nullopt);
}

TEST_F(ExtrasBarTest, anApplicationWithoutABarAnswersAllTheSame) {
    addApplication(7, "Editor");
    const auto bars = read();
    ASSERT_EQ(bars.size(), 1U);
    EXPECT_TRUE(bars[0].answered);
    EXPECT_FALSE(bars[0].isThere);
}

TEST_F(ExtrasBarTest, anApplicationThatHangsCostsTwoTimeoutsAndIsNamed) {
    addApplication(7, "Stuck");
    addApplication(8, "Mixer");
    accessibility.addStatusItem(8, {{700, 0}, {30, 37}});
    accessibility.hung = {7};
    const auto bars = read();
    ASSERT_EQ(bars.size(), 2U);
    EXPECT_FALSE(bars[0].answered);
    EXPECT_NEAR(bars[0].milliseconds, 600, 1);
    EXPECT_TRUE(bars[1].answered);
    EXPECT_EQ(bars[1].milliseconds, 0);
    EXPECT_NEAR(loop.elapsed(), 0.6, 0.001);
}

TEST_F(ExtrasBarTest, childrenThatAnswerSlowlyAreLeftWhenPatienceEnds) {
    addApplication(7, "Slow");
    // Items of a process that hangs, in the bar of one that does not.
    AccessibilityElementList items;
    for (int i = 0; i < 50; ++i)
        items.push_back(accessibility.makeElement(8));
    const auto bar = accessibility.makeElement(7);
    accessibility.setAttribute(bar, "AXChildren", items);
    accessibility.setAttribute(accessibility.applicationElement(7), "AXExtrasMenuBar", bar);
    accessibility.hung = {8};
    accessibility.defaultTimeout = 0.3;
    const auto bars = read();
    ASSERT_EQ(bars.size(), 1U);
    EXPECT_EQ(bars[0].childCount, 50U);
    EXPECT_EQ(bars[0].children.size(), 2U);
    EXPECT_LT(loop.elapsed(), 2 * ExtrasBar::patience);
}

TEST_F(ExtrasBarTest, aProcessThatNobodyKnowsIsListedAndNotAsked) {
    accessibility.running.push_back({0, std::nullopt, "test.Nobody"});
    const auto bars = read();
    ASSERT_EQ(bars.size(), 1U);
    EXPECT_EQ(bars[0].application, "test.Nobody");
    EXPECT_FALSE(bars[0].answered);
    EXPECT_EQ(accessibility.journal.count("copyAttributeValue"), 0U);
}

TEST_F(ExtrasBarTest, noMoreThanTwoHundredAreAsked) {
    for (int process = 1; process <= 201; ++process)
        accessibility.addApplication(process, "Many");
    EXPECT_EQ(read().size(), 200U);
}

} // namespace
} // namespace orrivane
