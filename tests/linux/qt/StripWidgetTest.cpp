#include "support/StripFixture.h"

#include <QHelpEvent>
#include <QToolTip>

namespace orrivane {

namespace {

class StripWidgetTest : public StripFixture {
  protected:
    View three() { return row({cell(1, 22, "A"), cell(2, 30, "B"), cell(3, 18, "C")}); }

    void hover(QPoint position) {
        QHelpEvent event(QEvent::ToolTip, position, strip().mapToGlobal(position));
        QApplication::sendEvent(&strip(), &event);
    }
    static QString tooltip() { return QToolTip::isVisible() ? QToolTip::text() : QString(); }
    void TearDown() override { QToolTip::hideText(); }
};

} // namespace

TEST_F(StripWidgetTest, aClickRunsTheActionAfterTheReleaseReturned) {
    show(three());
    click(30);
    EXPECT_TRUE(clicks.empty());
    pumpQueued();
    EXPECT_EQ(clicks, Clicks{"left B"});
}

TEST_F(StripWidgetTest, aRightClickRunsTheSecondaryAction) {
    show(three());
    click(60, Qt::RightButton);
    pumpQueued();
    EXPECT_EQ(clicks, Clicks{"right C"});
}

TEST_F(StripWidgetTest, aPressAloneDoesNothing) {
    show(three());
    press(30);
    pumpQueued();
    EXPECT_TRUE(clicks.empty());
}

TEST_F(StripWidgetTest, otherButtonsDoNothing) {
    show(three());
    click(30, Qt::MiddleButton);
    pumpQueued();
    EXPECT_TRUE(clicks.empty());
}

TEST_F(StripWidgetTest, aReleaseOnAnotherCellOrOutsideDoesNothing) {
    show(three());
    for (const double x : {60.0, 300.0, -5.0}) {
        press(30);
        release(x);
    }
    pumpQueued();
    EXPECT_TRUE(clicks.empty());
}

TEST_F(StripWidgetTest, aReleaseOfAnotherButtonDoesNotCount) {
    show(three());
    press(30, Qt::LeftButton);
    release(30, Qt::RightButton);
    pumpQueued();
    EXPECT_TRUE(clicks.empty());
    release(30, Qt::LeftButton);
    pumpQueued();
    EXPECT_EQ(clicks, Clicks{"left B"});
}

TEST_F(StripWidgetTest, thePressOfADoubleClickCountsToo) {
    show(three());
    click(30);
    mouse(QEvent::MouseButtonDblClick, {30, 10}, Qt::LeftButton);
    release(30);
    pumpQueued();
    EXPECT_EQ(clicks, (Clicks{"left B", "left B"}));
}

TEST_F(StripWidgetTest, aPressWhoseReleaseNeverCameDoesNotBlockTheNext) {
    show(three());
    press(30);
    click(5);
    pumpQueued();
    EXPECT_EQ(clicks, Clicks{"left A"});
}

TEST_F(StripWidgetTest, aCellThatVanishedWhileItWasPressedDoesNothing) {
    show(three());
    press(30);
    show(row({cell(1, 22, "A"), cell(3, 48, "C")}));
    release(30);
    pumpQueued();
    EXPECT_TRUE(clicks.empty());
}

TEST_F(StripWidgetTest, aCellThatVanishesBeforeTheActionRunsDoesNothing) {
    show(three());
    click(30);
    show(row({cell(1, 22, "A"), cell(3, 48, "C")}));
    pumpQueued();
    EXPECT_TRUE(clicks.empty());
}

TEST_F(StripWidgetTest, aCellThatMovedUnderTheMouseIsStillTheOneThatWasPressed) {
    show(three());
    press(30);
    show(row({cell(2, 60, "B")}));
    release(30);
    pumpQueued();
    EXPECT_EQ(clicks, Clicks{"left B"});
}

TEST_F(StripWidgetTest, theNewestActionRuns) {
    show(three());
    press(30);
    auto renewed = three();
    auto& second = std::get<HorizontalStack>(renewed.node).children[1];
    std::get<Button>(second.node).action = {[this] { clicks.emplace_back("renewed"); }};
    ASSERT_EQ(renewed, three());
    show(renewed);
    release(30);
    pumpQueued();
    EXPECT_EQ(clicks, Clicks{"renewed"});
}

TEST_F(StripWidgetTest, anActionMayReplaceTheCells) {
    auto view = row({cell(1, 22, "A")});
    auto& first = std::get<HorizontalStack>(view.node).children[0];
    std::get<Button>(first.node).action = {[this, note = std::string("still there")] {
        show(row({cell(9, 22, "I")}));
        clicks.push_back(note);
    }};
    show(view);
    click(5);
    pumpQueued();
    EXPECT_EQ(clicks, Clicks{"still there"});
}

TEST_F(StripWidgetTest, hidingForgetsAPress) {
    show(three());
    press(30);
    panel.orderOut();
    show(three());
    release(30);
    pumpQueued();
    EXPECT_TRUE(clicks.empty());
}

TEST_F(StripWidgetTest, aTooltipNamesTheCellUnderThePointer) {
    show(three());
    hover({30, 10});
    EXPECT_EQ(tooltip(), "B");
    hover({60, 10});
    EXPECT_EQ(tooltip(), "C");
    // Else only the active program's windows have any, and this one never is.
    EXPECT_TRUE(strip().testAttribute(Qt::WA_AlwaysShowToolTips));
}

TEST_F(StripWidgetTest, aTooltipFollowsANewName) {
    show(three());
    hover({30, 10});
    auto renamed = three();
    std::get<HorizontalStack>(renamed.node).children[1].tooltip = "Renamed";
    show(renamed);
    EXPECT_EQ(tooltip(), "Renamed");
}

TEST_F(StripWidgetTest, aTooltipGoesWithItsCellAndWithTheStrip) {
    show(three());
    hover({30, 10});
    show(row({cell(1, 22, "A"), cell(3, 48, "C")}));
    ASSERT_TRUE(pumpUntil([] { return tooltip().isEmpty(); }));
    hover({30, 10});
    ASSERT_EQ(tooltip(), "C");
    panel.orderOut();
    EXPECT_TRUE(pumpUntil([] { return tooltip().isEmpty(); }));
}

TEST_F(StripWidgetTest, aNameThatLooksLikeMarkupIsShownAsItIs) {
    show(row({cell(1, 22, "<b>A</b>")}));
    hover({5, 10});
    EXPECT_TRUE(tooltip().contains("&lt;b&gt;A&lt;/b&gt;"));
}

TEST_F(StripWidgetTest, aCellWithoutATooltipShowsNone) {
    auto view = three();
    std::get<HorizontalStack>(view.node).children[1].tooltip.clear();
    show(view);
    hover({30, 10});
    EXPECT_EQ(tooltip(), "");
}

TEST_F(StripWidgetTest, itNeverTakesTheKeyboard) {
    show(three());
    click(30);
    pumpQueued();
    EXPECT_TRUE(strip().windowFlags() & Qt::WindowDoesNotAcceptFocus);
    EXPECT_EQ(strip().focusPolicy(), Qt::NoFocus);
    EXPECT_FALSE(strip().hasFocus());
}

} // namespace orrivane
