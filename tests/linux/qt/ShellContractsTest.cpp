#include "support/ShellStage.h"

#include <linux/qt/QtMainLoop.h>
#include <linux/qt/QtMainWindow.h>
#include <linux/qt/QtPopover.h>
#include <linux/qt/QtStatusBar.h>
#include <linux/x11/PressWatcher.h>
#include <tests/support/contracts/MainWindowContract.h>
#include <tests/support/contracts/PopoverContract.h>
#include <tests/support/contracts/StatusBarContract.h>

#include <QSocketNotifier>
#include <QToolTip>

#include <algorithm>
#include <stdexcept>

// The bodies on a real server, seen through a connection that is not theirs.

namespace orrivane {
namespace {

e2e::PixelPoint middleOf(const e2e::WindowState& window) {
    return {window.area.x + window.area.width / 2, window.area.y + window.area.height / 2};
}

View textView() {
    View view;
    view.node = Text{"Status items"};
    return view;
}

struct TrayWorld : ShellWorld<false> {
    QtStatusBar body{nullptr};

    ~TrayWorld() { QToolTip::hideText(); }
    StatusBar& statusBar() { return body; }
    int itemCount() { return static_cast<int>(stage.icons().size()); }
    bool click() {
        stage.eyes().click(middleOf(newest()));
        return true;
    }
    /// A tray shows no text: it stands for the title that the icon has a red dot.
    std::string title() {
        const auto image = stage.eyes().imageOf(newest().id);
        if (!image)
            throw std::runtime_error("the icon cannot be seen");
        const bool dot = std::ranges::any_of(image->pixels, [](std::uint32_t pixel) {
            return (pixel >> 16 & 0xff) > 180 && (pixel >> 8 & 0xff) < 120 && (pixel & 0xff) < 120;
        });
        return dot ? " ●" : "";
    }
    /// What a pointer that rests there reads. The program's name is what a tray gets for none.
    std::optional<std::string> toolTip() {
        QToolTip::hideText();
        const auto middle = middleOf(newest());
        stage.eyes().movePointer({20, 900});
        pumpUntil([] { return !QToolTip::isVisible(); });
        stage.eyes().movePointer(middle);
        // To the toolkit, a pointer that comes back to where it left has not moved.
        stage.eyes().movePointer({middle.x + (leansLeft_ ? -1 : 1), middle.y});
        leansLeft_ = !leansLeft_;
        if (!pumpUntil([] { return QToolTip::isVisible(); }))
            return std::nullopt;
        const auto text = QToolTip::text().toStdString();
        return text == "Orrivane" ? std::nullopt : std::optional(text);
    }

  private:
    e2e::WindowState newest() {
        const auto icons = stage.icons();
        if (icons.empty())
            throw std::runtime_error("there is no icon");
        return icons.back();
    }

    bool leansLeft_ = false;
};

template <bool managed>
struct PopoverWorld : ShellWorld<managed> {
    std::unique_ptr<x11::Connection> connection = this->stage.connect();
    QtMainLoop loop;
    x11::PressWatcher presses{*connection, loop};
    QSocketNotifier readable{connection->descriptor(), QSocketNotifier::Read};
    QtStatusItem inBar{nullptr};
    QtPopover body{[this](auto pressed) { return presses.watch(std::move(pressed)); }};

    PopoverWorld() {
        QObject::connect(&readable, &QSocketNotifier::activated, [this] { connection->drain(); });
        inBar.setImage(Drawing{{18, 18}, {RoundedRectangle{.rect = {{2, 2}, {14, 14}}}}});
        EXPECT_TRUE(pumpUntil([this] { return !this->stage.icons().empty(); }));
    }
    Popover& popover() { return body; }
    /// Nothing counts before the server shows what the body says.
    template <typename Predicate>
    bool pumpUntil(Predicate holds) {
        return this->stage.pumpUntil(
            [&] { return seen().has_value() == body.isShown() && holds(); });
    }
    StatusItem& item() { return inBar; }
    static View root() { return textView(); }
    Size contentSize() {
        const auto window = seen();
        return window ? Size{double(window->area.width), double(window->area.height)} : Size{};
    }
    bool hasKeyboard() { return body.isShown() && this->stage.eyes().focusWindow() == id(); }
    bool clickElsewhere() {
        this->stage.eyes().click({30, 900});
        return true;
    }

  private:
    [[nodiscard]] xcb_window_t id() const {
        return static_cast<xcb_window_t>(body.widget()->winId());
    }
    std::optional<e2e::WindowState> seen() {
        const auto window = this->stage.eyes().window(id());
        return window && window->isViewable() ? window : std::nullopt;
    }
};

template <bool managed>
struct MainWindowWorld : ShellWorld<managed> {
    QtMainWindow body;

    MainWindow& window() { return body; }
    /// Nothing counts before the server shows what the body says, its frame included: a window
    /// manager puts that around a window which the toolkit calls visible already.
    template <typename Predicate>
    bool pumpUntil(Predicate holds) {
        return this->stage.pumpUntil([&] { return isSettled() && holds(); });
    }
    static View root() { return textView(); }
    bool closeByUser() {
        this->stage.askToClose(id());
        return true;
    }

  private:
    [[nodiscard]] xcb_window_t id() const {
        return static_cast<xcb_window_t>(body.widget()->winId());
    }
    bool isSettled() {
        const auto seen = this->stage.eyes().window(id());
        const bool isSeen = seen && seen->isViewable();
        if (!isSeen || !managed)
            return isSeen == body.isVisible();
        return body.isVisible() && body.frame().height() > seen->area.height;
    }
};

} // namespace

TEST(QtPopoverUnderAWindowManager, staysOpenWhenItIsShownAgainRightAfterItWasClosed) {
    PopoverWorld<true> world;
    if (world.missing)
        GTEST_SKIP() << *world.missing;
    world.popover().setRoot(world.root());
    world.popover().setContentSize({400, 300});
    world.popover().show(world.item());
    ASSERT_TRUE(world.pumpUntil([&] { return world.body.widget()->isActiveWindow(); }));
    world.popover().performClose();
    world.popover().show(world.item());
    pumpQueued();
    EXPECT_TRUE(world.popover().isShown());
    EXPECT_TRUE(world.pumpUntil([&] { return world.hasKeyboard(); }));
}

INSTANTIATE_TYPED_TEST_SUITE_P(Tray, StatusBarContract, TrayWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(BareServer, PopoverContract, PopoverWorld<false>);
INSTANTIATE_TYPED_TEST_SUITE_P(Managed, PopoverContract, PopoverWorld<true>);
INSTANTIATE_TYPED_TEST_SUITE_P(BareServer, MainWindowContract, MainWindowWorld<false>);
INSTANTIATE_TYPED_TEST_SUITE_P(Managed, MainWindowContract, MainWindowWorld<true>);

} // namespace orrivane
