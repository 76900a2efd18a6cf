#include <linux/qt/view/TileWidget.h>

#include <linux/qt/view/ScreenView.h>

#include <QAccessible>
#include <QApplication>
#include <QDragEnterEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orrivane {
namespace {

/// Three tiles that note what happens to them, in a row that is too narrow for them, and a button
/// behind it.
class TileWidgetTest : public testing::Test {
  protected:
    TileWidgetTest() {
        screen.setRoot(tiles({1, 2, 3}));
        screen.resize(200, 200);
        screen.show();
        screen.activateWindow();
        QCoreApplication::processEvents();
    }
    View tiles(const std::vector<std::uint32_t>& keys) {
        HorizontalStack row{.spacing = 8};
        for (const auto key : keys)
            row.children.push_back(tile(key));
        HorizontalScroll scroll;
        scroll.children.push_back({.node = std::move(row)});
        VerticalStack column;
        column.children = {{.node = std::move(scroll), .frame = {.fillsWidth = true}},
                           {.node = Button{.style = ButtonStyle::bordered, .title = "After"}}};
        return {.node = std::move(column)};
    }
    View tile(std::uint32_t key) {
        const auto note = [this, key](const std::string& what) {
            events.push_back(std::to_string(key) + " " + what);
        };
        return {.key = key,
                .accessibilityName = "Tile " + std::to_string(key),
                .node = Tile{.content = {.size = {120, 30}},
                             .source = {.began = {[note] { note("began"); }},
                                        .ended = {[note] { note("ended"); }}},
                             .target = {.performed = {[this, note] {
                                            note("dropped");
                                            return takesDrops;
                                        }}},
                             .stepped = {[note](int by) { note(by < 0 ? "left" : "right"); }}}};
    }
    TileWidget& at(std::size_t index) {
        std::vector<TileWidget*> all;
        for (auto* widget : screen.findChildren<QWidget*>())
            if (auto* found = dynamic_cast<TileWidget*>(widget))
                all.push_back(found);
        return *all.at(index);
    }

    /// As the server reports it; what the toolkit's tests offer lets go of the held keys as well.
    static void press(QWidget& tile, Qt::Key key, Qt::KeyboardModifiers held) {
        QKeyEvent event(QEvent::KeyPress, key, held);
        QCoreApplication::sendEvent(&tile, &event);
    }
    /// `held`: before the release.
    static void release(QWidget& tile, Qt::Key key, Qt::KeyboardModifiers held) {
        QKeyEvent event(QEvent::KeyRelease, key, held);
        QCoreApplication::sendEvent(&tile, &event);
    }

    std::vector<std::string> events;
    bool takesDrops = true;
    ScreenView screen;
};

using Events = std::vector<std::string>;

TEST_F(TileWidgetTest, theArrowKeysTakeItAlongAndLettingGoDropsIt) {
    auto& tile = at(1);
    tile.setFocus();
    press(tile, Qt::Key_Left, Qt::AltModifier);
    release(tile, Qt::Key_Left, Qt::AltModifier);
    press(tile, Qt::Key_Right, Qt::AltModifier);
    release(tile, Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(events, (Events{"2 left", "2 right"}));
    release(tile, Qt::Key_Alt, Qt::AltModifier);
    EXPECT_EQ(events, (Events{"2 left", "2 right", "2 dropped", "2 ended"}));
    release(tile, Qt::Key_Alt, Qt::AltModifier);
    EXPECT_EQ(events.size(), 4U);
}

TEST_F(TileWidgetTest, theControlKeyDoesTheSame) {
    auto& tile = at(0);
    tile.setFocus();
    press(tile, Qt::Key_Right, Qt::ControlModifier);
    release(tile, Qt::Key_Control, Qt::ControlModifier);
    EXPECT_EQ(events, (Events{"1 right", "1 dropped", "1 ended"}));
}

TEST_F(TileWidgetTest, itIsNotDroppedBeforeTheLastKeyIsUp) {
    auto& tile = at(0);
    tile.setFocus();
    press(tile, Qt::Key_Right, Qt::AltModifier);
    release(tile, Qt::Key_Alt, Qt::AltModifier | Qt::MetaModifier);
    EXPECT_EQ(events, Events{"1 right"});
    release(tile, Qt::Key_Meta, Qt::MetaModifier);
    EXPECT_EQ(events, (Events{"1 right", "1 dropped", "1 ended"}));
}

TEST_F(TileWidgetTest, withoutAKeyHeldTheArrowsMoveNothing) {
    auto& tile = at(0);
    tile.setFocus();
    QTest::keyClick(&tile, Qt::Key_Right);
    press(tile, Qt::Key_Right, Qt::ShiftModifier | Qt::AltModifier);
    release(tile, Qt::Key_Right, Qt::ShiftModifier | Qt::AltModifier);
    EXPECT_TRUE(events.empty());
}

TEST_F(TileWidgetTest, escapePutsItBack) {
    auto& tile = at(0);
    tile.setFocus();
    press(tile, Qt::Key_Right, Qt::AltModifier);
    press(tile, Qt::Key_Escape, Qt::AltModifier);
    release(tile, Qt::Key_Alt, Qt::AltModifier);
    EXPECT_EQ(events, (Events{"1 right", "1 ended"}));
}

TEST_F(TileWidgetTest, losingTheKeyboardPutsItBack) {
    auto& tile = at(0);
    tile.setFocus();
    press(tile, Qt::Key_Right, Qt::AltModifier);
    at(1).setFocus();
    EXPECT_EQ(events, (Events{"1 right", "1 ended"}));
}

TEST_F(TileWidgetTest, aTileThatGoesAwayMeanwhileIsPutBack) {
    auto& tile = at(0);
    tile.setFocus();
    press(tile, Qt::Key_Right, Qt::AltModifier);
    screen.setRoot({.node = Text{.text = "Nothing"}});
    EXPECT_EQ(events, (Events{"1 right", "1 ended"}));
}

TEST_F(TileWidgetTest, assistiveProgramsMoveItInOneGo) {
    auto* accessible = QAccessible::queryAccessibleInterface(&at(2));
    ASSERT_NE(accessible, nullptr);
    EXPECT_EQ(accessible->role(), QAccessible::ListItem);
    EXPECT_EQ(accessible->text(QAccessible::Name), "Tile 3");
    EXPECT_TRUE(accessible->text(QAccessible::Description).contains("Alt"));
    auto* actions = accessible->actionInterface();
    ASSERT_NE(actions, nullptr);
    ASSERT_TRUE(actions->actionNames().contains("Move Left"));
    EXPECT_EQ(actions->keyBindingsForAction("Move Left").value(0), "Alt+Left");
    actions->doAction("Move Left");
    actions->doAction("Move Right");
    EXPECT_EQ(events,
              (Events{"3 left", "3 dropped", "3 ended", "3 right", "3 dropped", "3 ended"}));
    at(2).setEnabled(false);
    EXPECT_FALSE(actions->actionNames().contains("Move Left"));
    actions->doAction("Move Left");
    EXPECT_EQ(events.size(), 6U);
}

TEST_F(TileWidgetTest, itTakesPlainTextOnlyAndProposesToMoveIt) {
    constexpr auto offered = Qt::CopyAction | Qt::MoveAction;
    auto& tile = at(1);
    const QMimeData nothing;
    QDragEnterEvent strange({10, 10}, offered, &nothing, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&tile, &strange);
    EXPECT_FALSE(strange.isAccepted());
    QMimeData text;
    text.setText("3");
    QDragEnterEvent enter({10, 10}, offered, &text, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&tile, &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDragMoveEvent over({10, 10}, offered, &text, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&tile, &over);
    EXPECT_TRUE(over.isAccepted());
    EXPECT_EQ(over.dropAction(), Qt::MoveAction);
    QDragLeaveEvent leave;
    QCoreApplication::sendEvent(&tile, &leave);
    EXPECT_TRUE(events.empty());
}

TEST_F(TileWidgetTest, aDropIsAcceptedOrRefusedAsItsActionSays) {
    auto& tile = at(1);
    QMimeData text;
    text.setText("3");
    for (const bool takes : {true, false}) {
        takesDrops = takes;
        QDragEnterEvent enter({10, 10}, Qt::MoveAction, &text, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&tile, &enter);
        QDropEvent drop({10, 10}, Qt::MoveAction, &text, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&tile, &drop);
        EXPECT_EQ(drop.isAccepted(), takes);
    }
    EXPECT_EQ(events, (Events{"2 dropped", "2 dropped"}));
}

TEST_F(TileWidgetTest, tabGoesFromTileToTileAndShowsTheOneItReaches) {
    auto* area = screen.findChild<QScrollArea*>();
    const auto isInSight = [&](const QWidget& tile) {
        const QRect place(tile.mapTo(area->viewport(), QPoint()), tile.size());
        return area->viewport()->rect().contains(place);
    };
    EXPECT_FALSE(isInSight(at(2)));
    at(0).setFocus(Qt::TabFocusReason);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(screen.focusWidget(), &at(i));
        EXPECT_TRUE(isInSight(at(i)));
        QTest::keyClick(screen.focusWidget(), Qt::Key_Tab);
    }
    area->horizontalScrollBar()->setValue(0);
    QTest::keyClick(screen.focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(screen.focusWidget(), &at(2));
    EXPECT_TRUE(isInSight(at(2)));
}

TEST_F(TileWidgetTest, assistiveProgramsReadThemInTheNewOrderAfterAMove) {
    auto* first = &at(0);
    auto* last = &at(2);
    last->setFocus();
    screen.setRoot(tiles({3, 1, 2}));
    QCoreApplication::processEvents();
    EXPECT_EQ(&at(0), last);
    EXPECT_EQ(&at(1), first);
    EXPECT_LT(last->x(), first->x());
    EXPECT_EQ(screen.focusWidget(), last);
}

TEST_F(TileWidgetTest, theOneWithTheKeyboardIsSeen) {
    at(0).setFocus();
    const auto focused = at(0).grab().toImage();
    at(1).setFocus();
    EXPECT_NE(at(0).grab().toImage(), focused);
}

} // namespace
} // namespace orrivane
