#include <tests/linux/qt/view/ScreenViewFixture.h>

#include <QAccessible>
#include <QCheckBox>
#include <QLabel>
#include <QMessageBox>
#include <QSlider>
#include <QTest>
#include <QToolButton>

namespace orrivane {
namespace {

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

} // namespace
} // namespace orrivane
