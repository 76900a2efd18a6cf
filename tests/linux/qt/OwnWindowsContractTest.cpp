#include "support/ShellStage.h"

#include <linux/qt/QtMainLoop.h>
#include <linux/qt/QtMainWindow.h>
#include <linux/qt/QtPopover.h>
#include <linux/qt/QtStatusBar.h>
#include <linux/x11/X11Platform.h>
#include <tests/support/contracts/OwnWindowsContract.h>

#include <QGuiApplication>
#include <QSocketNotifier>

namespace orrivane {
namespace {

/// The port beside the toolkit, wired as the program wires them.
template <bool managed>
struct OwnWindowsWorld : ShellWorld<managed> {
    QtMainLoop loop;
    std::unique_ptr<x11::Connection> connection = this->stage.connect();
    x11::X11Platform port{
        *connection,
        loop,
        {1, x11::CutoutFile(this->stage.folder() + "/notch"), {}, {}, this->stage.folder()}};
    QSocketNotifier readable{connection->descriptor(), QSocketNotifier::Read};
    x11::XClient other{this->stage.display()};
    QtStatusItem item{nullptr};
    QtPopover popover;
    QtMainWindow window;

    OwnWindowsWorld() {
        QObject::connect(&readable, &QSocketNotifier::activated, [this] { connection->drain(); });
        auto* toolkit = qApp->nativeInterface<QNativeInterface::QX11Application>();
        port.items.addOwnClient(connection->clientOf(xcb_generate_id(toolkit->connection())));
        port.ownWindows.setMainWindow([this] { return window.isVisible(); });
        window.create({"Orrivane", {600, 400}, {300, 200}});
        popover.setContentSize({400, 300});
    }
    /// Nothing counts before the server shows what the toolkit says: a window manager moves a
    /// window into a frame before it can be seen.
    template <typename Predicate>
    bool pumpUntil(Predicate holds) {
        return this->stage.pumpUntil(
            [&] { return isSettled(*window.widget()) && isSettled(*popover.widget()) && holds(); });
    }
    OwnWindows& ownWindows() { return port.ownWindows; }
    std::int64_t openMainViewWindow() {
        window.makeKeyAndOrderFront();
        return static_cast<std::int64_t>(window.widget()->winId());
    }
    void closeMainViewWindow() { window.widget()->close(); }
    std::int64_t openPopover() {
        popover.show(item);
        return static_cast<std::int64_t>(popover.widget()->winId());
    }
    bool openForeignWindow(std::int64_t& number) {
        const auto opened = other.create({.area = {100, 200, 300, 200}});
        other.map(opened);
        number = opened;
        // Not to list what one has not heard of yet would prove nothing.
        return pumpUntil([&] {
            port.items.current();
            return port.tree.find(opened) != nullptr;
        });
    }

  private:
    bool isSettled(const QWidget& widget) {
        const auto seen =
            this->stage.eyes().window(static_cast<xcb_window_t>(widget.internalWinId()));
        return (seen && seen->isViewable()) == widget.isVisible();
    }
};

} // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(BareServer, OwnWindowsContract, OwnWindowsWorld<false>);
INSTANTIATE_TYPED_TEST_SUITE_P(Managed, OwnWindowsContract, OwnWindowsWorld<true>);

} // namespace orrivane
