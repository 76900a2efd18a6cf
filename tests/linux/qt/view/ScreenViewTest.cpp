#include <tests/linux/qt/view/ScreenViewFixture.h>

#include <QLabel>
#include <QTest>

namespace orrivane {
namespace {

TEST_F(ScreenViewTest, aNewValueChangesTheControlsThatAreThere) {
    show(column({text("one"), keyed(0, "press")}));
    auto* label = &only<QLabel>();
    auto* button = &only<QAbstractButton>();
    screen.setRoot(column({text("two"), keyed(0, "push")}));
    EXPECT_EQ(&only<QLabel>(), label);
    EXPECT_EQ(label->text(), "two");
    EXPECT_EQ(&only<QAbstractButton>(), button);
    EXPECT_EQ(button->text(), "push");
}

TEST_F(ScreenViewTest, whatIsNotVisibleTakesNoRoom) {
    auto hidden = text("hidden");
    hidden.isVisible = false;
    show(column({hidden, text("shown")}));
    const auto labels = screen.findChildren<QLabel*>();
    ASSERT_EQ(labels.size(), 2);
    EXPECT_FALSE(labels[0]->isVisible());
    EXPECT_EQ(labels[1]->y(), 0);
    const int alone = screen.naturalHeight();
    hidden.isVisible = true;
    screen.setRoot(column({hidden, text("shown")}));
    QCoreApplication::processEvents();
    EXPECT_TRUE(labels[0]->isVisible());
    EXPECT_GT(labels[1]->y(), labels[0]->y());
    EXPECT_GT(screen.naturalHeight(), alone);
}

TEST_F(ScreenViewTest, keyedChildrenAreFoundAgainWhereverTheyGo) {
    show(column({keyed(1, "a"), keyed(2, "b"), keyed(3, "c")}));
    QAbstractButton* second = nullptr;
    for (auto* button : screen.findChildren<QAbstractButton*>())
        if (button->text() == "b")
            second = button;
    ASSERT_NE(second, nullptr);
    screen.setRoot(column({keyed(4, "d"), keyed(2, "B"), keyed(1, "a")}));
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(titles(), (std::vector<std::string>{"d", "B", "a"}));
    EXPECT_EQ(second->text(), "B");
}

TEST_F(ScreenViewTest, anActionMayReplaceTheButtonItBelongsTo) {
    int pressed = 0;
    show(column({keyed(1, "go", [&] {
        ++pressed;
        screen.setRoot(column({keyed(2, "done")}));
    })}));
    QTest::mouseClick(&only<QAbstractButton>(), Qt::LeftButton);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
    EXPECT_EQ(pressed, 1);
    EXPECT_EQ(titles(), (std::vector<std::string>{"done"}));
}

TEST_F(ScreenViewTest, aScrolledColumnTellsItsHeightOnceAndWhenItChanges) {
    std::vector<double> heights;
    const auto value = [&](std::vector<View> rows) {
        return View{.node = VerticalScroll{.spacing = 10,
                                           .children = std::move(rows),
                                           .contentHeightChanged = {
                                               [&](double height) { heights.push_back(height); }}}};
    };
    show(value({text("a"), text("b")}));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !heights.empty(); }, 2000));
    const double two = heights.back();
    screen.setRoot(value({text("a"), text("b")}));
    QCoreApplication::processEvents();
    EXPECT_EQ(heights.back(), two);
    screen.setRoot(value({text("a"), text("b"), text("c")}));
    ASSERT_TRUE(QTest::qWaitFor([&] { return heights.back() > two; }, 2000));
    EXPECT_EQ(heights.back(), screen.naturalHeight());
}

TEST_F(ScreenViewTest, longTextGrowsDownwardsWhereThePlaceIsNarrow) {
    const std::string sentence = "A sentence that is far too long for a narrow place and has to "
                                 "be broken into several lines there.";
    show({.node = VerticalScroll{.children = {text(sentence)}}});
    screen.resize(1200, 400);
    QCoreApplication::processEvents();
    const int wide = screen.naturalHeight();
    screen.resize(200, 400);
    QCoreApplication::processEvents();
    EXPECT_GE(screen.naturalHeight(), 3 * wide);
}

TEST_F(ScreenViewTest, tabGoesThroughTheControlsInReadingOrderAlsoWhenOneCameLater) {
    show(column({keyed(1, "a"), keyed(3, "c")}));
    screen.setRoot(column({keyed(1, "a"), keyed(2, "b"), keyed(3, "c")}));
    QCoreApplication::processEvents();
    screen.activateWindow();
    std::vector<std::string> order;
    for (auto* button : screen.findChildren<QAbstractButton*>())
        if (button->text() == "a")
            button->setFocus();
    for (int i = 0; i < 3; ++i) {
        if (auto* focused = qobject_cast<QAbstractButton*>(screen.focusWidget()))
            order.push_back(focused->text().toStdString());
        QTest::keyClick(screen.focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(order, (std::vector<std::string>{"a", "b", "c"}));
}

TEST_F(ScreenViewTest, appearedRunsOnceForEachShowing) {
    int appeared = 0;
    int gone = 0;
    auto child = text("x");
    child.appeared = {[&] { ++appeared; }};
    child.disappeared = {[&] { ++gone; }};
    show(column({child}));
    screen.setShown(true);
    screen.setShown(true);
    EXPECT_EQ(appeared, 1);
    screen.setShown(false);
    screen.setShown(false);
    EXPECT_EQ(gone, 1);
    screen.setShown(true);
    EXPECT_EQ(appeared, 2);
}

TEST_F(ScreenViewTest, aDisabledNodeDisablesAllBelowIt) {
    auto group = column({keyed(0, "press")});
    group.isEnabled = false;
    show(group);
    EXPECT_FALSE(only<QAbstractButton>().isEnabled());
    group.isEnabled = true;
    screen.setRoot(group);
    EXPECT_TRUE(only<QAbstractButton>().isEnabled());
}

TEST_F(ScreenViewTest, tooltipsAndNamesReachTheControl) {
    auto button = keyed(0, "Refresh");
    button.tooltip = "Look again";
    button.accessibilityName = "Refresh the list";
    show(column({button}));
    EXPECT_EQ(only<QAbstractButton>().toolTip(), "Look again");
    EXPECT_EQ(only<QAbstractButton>().accessibleName(), "Refresh the list");
}

} // namespace
} // namespace orrivane
