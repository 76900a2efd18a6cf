#include "../support/StripScreen.h"

#include <linux/qt/view/ScreenView.h>
#include <linux/qt/view/TileWidget.h>

#include <QCoreApplication>
#include <QDropEvent>
#include <QElapsedTimer>
#include <QMimeData>
#include <QPointer>
#include <QTimer>
#include <QWindow>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace orrivane {
namespace {

using Events = std::vector<std::string>;

/// Reads along what is dropped anywhere in the program.
class DroppedText : public QObject {
  public:
    DroppedText() { QCoreApplication::instance()->installEventFilter(this); }
    bool eventFilter(QObject* to, QEvent* event) override {
        if (event->type() == QEvent::Drop) {
            const auto& drop = static_cast<QDropEvent&>(*event);
            text = drop.mimeData()->text().toStdString();
            formats = drop.mimeData()->formats();
            actions = drop.possibleActions();
        }
        return QObject::eventFilter(to, event);
    }

    std::string text;
    QStringList formats;
    Qt::DropActions actions;
};

/// Three tiles in a window, dragged with the pointer of a real server: its toolkit has a loop of
/// its own for the time of a drag.
class TileDrag : public testing::Test {
  protected:
    struct Step {
        std::function<void()> act;
        std::function<bool()> isDone;
    };

    TileDrag() {
        screen.setWindowFlags(Qt::BypassWindowManagerHint);
        screen.setRoot(tiles({1, 2, 3}));
        screen.setGeometry(0, 0, 380, 120);
        screen.show();
        EXPECT_TRUE(soon([&] { return screen.windowHandle()->isExposed() && at(2).x() > 0; }));
    }
    View tiles(const std::vector<std::uint32_t>& keys) {
        HorizontalStack row{.spacing = 8};
        for (const auto key : keys)
            row.children.push_back(tile(key));
        return {.node = std::move(row)};
    }
    View tile(std::uint32_t key) {
        const auto note = [this, key](const std::string& what) {
            events.push_back(std::to_string(key) + " " + what);
        };
        return {.key = key,
                .node = Tile{.content = {.size = {100, 30}},
                             .source = {.payload = std::to_string(key),
                                        .began = {[note] { note("began"); }},
                                        .ended = {[note] { note("ended"); }}},
                             .target = {.updated = {[note](double x) { note(x < 50 ? "<" : ">"); }},
                                        .exited = {[note] { note("exited"); }},
                                        .performed = {[this, note] {
                                            note("dropped");
                                            return takesDrops;
                                        }}}}};
    }
    TileWidget& at(std::size_t index) {
        std::vector<TileWidget*> all;
        for (auto* widget : screen.findChildren<QWidget*>())
            if (auto* found = dynamic_cast<TileWidget*>(widget))
                all.push_back(found);
        return *all.at(index);
    }

    static bool soon(const std::function<bool()>& holds) {
        QElapsedTimer elapsed;
        elapsed.start();
        while (!holds()) {
            if (elapsed.elapsed() > 10'000)
                return false;
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 10);
        }
        return true;
    }
    [[nodiscard]] bool happened(const std::string& what) const {
        return std::ranges::find(events, what) != events.end();
    }
    /// A step of the hand: to `x` of tile `index` until `what` has happened.
    Step over(std::size_t index, int x, const std::string& what) {
        return {[this, index, x] { point(index, x); }, [this, what] { return happened(what); }};
    }
    Step letGo() {
        return {[this] { server.hold(false); }, [this] { return happened("2 ended"); }};
    }
    void point(std::size_t index, int x) {
        const auto place = at(index).mapToGlobal(QPoint(x, 15));
        server.move(place * screen.devicePixelRatio());
    }
    /// Takes tile 2 by its middle and then does `steps`, each when the last one has had its effect.
    bool drag(std::vector<Step> steps) {
        point(1, 50);
        server.hold(true);
        steps.insert(steps.begin(), {{}, [this] { return happened("2 began"); }});
        std::size_t next = 0;
        int wiggle = 0;
        QTimer hand;
        QObject::connect(&hand, &QTimer::timeout, [&] {
            if (next == 0)
                point(1, 50 + 5 * (++wiggle % 6)); // until it is far enough to be a drag
            while (next < steps.size() && steps[next].isDone())
                if (++next < steps.size() && steps[next].act)
                    steps[next].act();
        });
        hand.start(5);
        const bool done = soon([&] { return next == steps.size(); });
        server.hold(false);
        EXPECT_TRUE(done) << testing::PrintToString(events);
        return done;
    }
    /// What happened, without repetitions of the same.
    [[nodiscard]] Events story() const {
        auto told = events;
        told.erase(std::ranges::unique(told).begin(), told.end());
        return told;
    }

    StripScreen server;
    Events events;
    bool takesDrops = true;
    ScreenView screen;
};

TEST_F(TileDrag, aTileSaysWhereOverItTheOtherOneIsAndTakesTheDrop) {
    ASSERT_TRUE(drag({over(2, 20, "3 <"), over(2, 80, "3 >"), letGo()}));
    const auto told = story();
    EXPECT_EQ(told.front(), "2 began");
    EXPECT_EQ(Events(told.end() - 4, told.end()), (Events{"3 <", "3 >", "3 dropped", "2 ended"}));
    EXPECT_EQ(std::ranges::count(told, "2 exited"), 1);
}

TEST_F(TileDrag, whatTravelsIsTheTilesTextAndItCanOnlyBeMoved) {
    const DroppedText dropped;
    ASSERT_TRUE(drag({over(2, 20, "3 <"), letGo()}));
    EXPECT_EQ(dropped.text, "2");
    EXPECT_EQ(dropped.formats, QStringList("text/plain"));
    EXPECT_EQ(dropped.actions, Qt::MoveAction);
}

TEST_F(TileDrag, aDragLetGoBesideTheTilesEndsWithoutADrop) {
    const auto beside =
        Step{[this] { server.move({700, 280}); }, [this] { return happened("3 exited"); }};
    ASSERT_TRUE(drag({over(2, 20, "3 <"), beside, letGo()}));
    EXPECT_EQ(story().back(), "2 ended");
    EXPECT_FALSE(happened("3 dropped"));
}

TEST_F(TileDrag, aDragWhoseTileGoesAwayMeanwhileIsCarriedToItsEnd) {
    const QPointer<QWidget> tile = &at(1);
    const Step goes{[this] { screen.setRoot(tiles({1, 3})); }, [tile] { return !tile; }};
    ASSERT_TRUE(drag({over(2, 20, "3 <"), goes, over(1, 80, "3 >"), letGo()}));
    EXPECT_TRUE(happened("3 dropped"));
    EXPECT_EQ(std::ranges::count(events, "2 ended"), 1);
}

TEST_F(TileDrag, aTileThatRefusesTheDropEndsTheDragAllTheSame) {
    takesDrops = false;
    ASSERT_TRUE(drag({over(0, 20, "1 <"), letGo()}));
    const auto told = story();
    EXPECT_EQ(Events(told.end() - 2, told.end()), (Events{"1 dropped", "2 ended"}));
}

} // namespace
} // namespace orrivane
