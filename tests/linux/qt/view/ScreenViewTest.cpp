#include <linux/qt/view/ScreenView.h>

#include <gtest/gtest.h>

#include <algorithm>

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QMessageBox>
#include <QScrollArea>
#include <QSlider>
#include <QTest>
#include <QToolButton>

namespace orrivane {
namespace {

View text(std::string words) {
    return {.node = Text{.text = std::move(words)}};
}

View column(std::vector<View> children) {
    return {.node = VerticalStack{.spacing = 4, .children = std::move(children)}};
}

View keyed(std::uint32_t key, std::string title, std::function<void()> action = {}) {
    return {.key = key,
            .node = Button{.style = ButtonStyle::bordered,
                           .action = {std::move(action)},
                           .title = std::move(title)}};
}

class ScreenViewTest : public testing::Test {
  protected:
    void show(const View& root) {
        screen.setRoot(root);
        screen.resize(500, 400);
        screen.show();
        QCoreApplication::processEvents();
    }
    template <typename Widget>
    Widget& only() {
        const auto found = screen.findChildren<Widget*>();
        if (found.size() != 1)
            throw std::runtime_error("not exactly one of them");
        return *found.front();
    }
    std::vector<std::string> titles() {
        std::vector<std::pair<int, std::string>> placed;
        for (const auto* button : screen.findChildren<QAbstractButton*>())
            if (button->isVisible())
                placed.emplace_back(button->y(), button->text().toStdString());
        std::ranges::sort(placed);
        std::vector<std::string> result;
        for (auto& [y, title] : placed)
            result.push_back(title);
        return result;
    }

    ScreenView screen;
};

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

TEST_F(ScreenViewTest, buttonsObeyReturnAndSpace) {
    int pressed = 0;
    show(column({keyed(0, "go", [&] { ++pressed; })}));
    auto& button = only<QAbstractButton>();
    QTest::keyClick(&button, Qt::Key_Space);
    EXPECT_EQ(pressed, 1);
    QTest::keyClick(&button, Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([&] { return pressed == 2; }, 2000));
}

TEST_F(ScreenViewTest, aSwitchReportsAndStaysUntilTheNextValue) {
    std::vector<bool> reported;
    const auto value = [&](bool on) {
        return column({{.node = Switch{.label = "Mirror", .isOn = on, .changed = {[&](bool next) {
                                                                          reported.push_back(next);
                                                                      }}}}});
    };
    show(value(false));
    auto& box = only<QCheckBox>();
    QTest::mouseClick(&box, Qt::LeftButton);
    EXPECT_EQ(reported, std::vector<bool>{true});
    EXPECT_FALSE(box.isChecked());
    screen.setRoot(value(true));
    EXPECT_TRUE(box.isChecked());
    EXPECT_EQ(reported.size(), 1U);
    EXPECT_EQ(box.accessibleName(), "Mirror");
}

TEST_F(ScreenViewTest, aSliderReportsWholeStepsInsideItsRange) {
    std::vector<double> reported;
    const auto value = [&](double now) {
        return column(
            {{.node = Slider{.label = "Spacing",
                             .minimumLabel = "Tight",
                             .maximumLabel = "Default",
                             .value = now,
                             .minimum = 4,
                             .maximum = 16,
                             .step = 1,
                             .changed = {[&](double next) { reported.push_back(next); }}}}});
    };
    show(value(16));
    auto& slider = only<QSlider>();
    auto* spoken = QAccessible::queryAccessibleInterface(&slider)->valueInterface();
    ASSERT_NE(spoken, nullptr);
    EXPECT_EQ(spoken->minimumValue(), 4);
    EXPECT_EQ(spoken->currentValue(), 16);
    QTest::keyClick(&slider, Qt::Key_Right);
    EXPECT_TRUE(reported.empty());
    QTest::keyClick(&slider, Qt::Key_Left);
    EXPECT_EQ(reported, std::vector<double>{15});
    screen.setRoot(value(4));
    EXPECT_EQ(slider.value(), slider.minimum());
    QTest::keyClick(&slider, Qt::Key_Left);
    EXPECT_EQ(reported.size(), 1U);
    screen.setRoot(value(std::numeric_limits<double>::quiet_NaN()));
    EXPECT_EQ(slider.value(), slider.minimum());
    screen.setRoot(value(1e300));
    EXPECT_EQ(slider.value(), slider.maximum());
}

TEST_F(ScreenViewTest, aDisclosureShowsItsContentOnlyWhileOpen) {
    std::vector<bool> reported;
    const auto value = [&](bool open) {
        return column(
            {{.node = Disclosure{.label = open ? "Hide" : "Show",
                                 .isExpanded = open,
                                 .changed = {[&](bool next) { reported.push_back(next); }},
                                 .children = {text("inside")}}}});
    };
    show(value(false));
    EXPECT_FALSE(only<QLabel>().isVisible());
    QTest::mouseClick(&only<QToolButton>(), Qt::LeftButton);
    EXPECT_EQ(reported, std::vector<bool>{true});
    EXPECT_FALSE(only<QLabel>().isVisible());
    screen.setRoot(value(true));
    EXPECT_TRUE(only<QLabel>().isVisible());
    EXPECT_EQ(only<QToolButton>().text(), "Hide");
}

TEST_F(ScreenViewTest, aDialogAnswersOnceWithTheChosenButton) {
    std::vector<std::string> answers;
    const auto value = [&](bool asks) {
        return column({{.node = ConfirmationDialog{
                            .title = "Restart?",
                            .message = "It flickers.",
                            .isPresented = asks,
                            .buttons = {{.title = "Apply & Go",
                                         .chosen = {[&] { answers.push_back("apply"); }}},
                                        {.title = "Cancel",
                                         .role = DialogButtonRole::cancel,
                                         .chosen = {[&] { answers.push_back("cancel"); }}}},
                            .closed = {[&] { answers.push_back("closed"); }}}}});
    };
    show(value(true));
    auto* box = screen.findChild<QMessageBox*>();
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->text(), "Restart?");
    EXPECT_EQ(box->informativeText(), "It flickers.");
    screen.setRoot(value(true));
    EXPECT_EQ(screen.findChildren<QMessageBox*>().size(), 1);
    const auto buttons = box->buttons();
    // Doubled, because the toolkit takes a single one for the mark of a shortcut.
    const auto apply = std::ranges::find(buttons, QString("Apply && Go"), &QAbstractButton::text);
    ASSERT_NE(apply, buttons.end());
    EXPECT_EQ((*apply)->accessibleName(), "Apply & Go");
    (*apply)->click();
    EXPECT_EQ(answers, std::vector<std::string>{"apply"});
    screen.setRoot(value(false));
    screen.setRoot(value(true));
    QTest::keyClick(screen.findChildren<QMessageBox*>().back(), Qt::Key_Escape);
    EXPECT_EQ(answers, (std::vector<std::string>{"apply", "cancel"}));
}

TEST_F(ScreenViewTest, aDialogThatIsTakenAwayGivesNoAnswer) {
    int answers = 0;
    const auto value = [&](bool asks) {
        return column({{.node = ConfirmationDialog{
                            .title = "?",
                            .isPresented = asks,
                            .buttons = {{.title = "Yes", .chosen = {[&] { ++answers; }}}},
                            .closed = {[&] { ++answers; }}}}});
    };
    show(value(true));
    screen.setRoot(value(false));
    QCoreApplication::processEvents();
    EXPECT_EQ(answers, 0);
    for (const auto* box : screen.findChildren<QMessageBox*>())
        EXPECT_FALSE(box->isVisible());
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
