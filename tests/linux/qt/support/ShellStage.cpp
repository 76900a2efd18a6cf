#include "ShellStage.h"

#include <linux/x11/Reply.h>

#include <RequiredHere.h>
#include <TestWindow.h>

#include <chrono>
#include <cstdlib>
#include <stdexcept>

namespace orrivane {

namespace {

void sendMessage(e2e::Observer& from, xcb_window_t to, xcb_window_t about, const char* type,
                 std::uint32_t word, std::uint32_t mask) {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = about;
    event.type = from.atom(type);
    event.data.data32[0] = word;
    xcb_send_event(from.connection(), 0, to, mask, reinterpret_cast<const char*>(&event));
    from.focusWindow(); // a round trip: the server has it
}

} // namespace

ShellStage* ShellStage::current_ = nullptr;

ShellStage::ShellStage()
    : server_({}, directory_.path())
    , eyes_(server_.display())
    , tray_(server_.display()) {
    current_ = this;
}

std::unique_ptr<x11::Connection> ShellStage::connect() const {
    std::string problem;
    auto connection = x11::Connection::open(display().c_str(), problem);
    if (!connection)
        throw std::runtime_error(problem);
    return connection;
}

std::optional<std::string> ShellStage::startWindowManager() {
    const char* path = std::getenv("PATH");
    manager_.emplace(e2e::ChildProcess::Options{
        {"openbox", "--sm-disable"},
        {{"DISPLAY", display()}, {"HOME", folder()}, {"PATH", path ? path : "/usr/bin:/bin"}},
        folder() + "/openbox.log",
        {},
        folder()});
    // It announces itself before it serves: only a window it has taken over proves that it does.
    e2e::TestWindow probe(eyes_, {{0, 0, 8, 8}});
    const bool serves = pumpUntil([&] {
        probe.map();
        return !manager_->isRunning() || probe.isManaged();
    });
    if (serves && manager_->isRunning())
        return std::nullopt;
    return e2e::reasonToSkip("the window manager openbox does not run here");
}

void ShellStage::stopWindowManager() {
    constexpr std::chrono::seconds bound{5};
    if (manager_)
        manager_->terminate(bound);
    manager_.reset();
}

std::vector<e2e::WindowState> ShellStage::icons() {
    std::vector<e2e::WindowState> result;
    for (const auto id : docked_)
        if (const auto icon = eyes_.window(id); icon && icon->isViewable())
            result.push_back(*icon);
    return result;
}

void ShellStage::askToClose(xcb_window_t window) {
    if (manager_)
        sendMessage(eyes_, eyes_.root(), window, "_NET_CLOSE_WINDOW", XCB_CURRENT_TIME,
                    XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT);
    else
        sendMessage(eyes_, window, window, "WM_PROTOCOLS", eyes_.atom("WM_DELETE_WINDOW"), 0);
}

void ShellStage::serveTray() {
    constexpr std::uint32_t requestDock = 0;
    auto* connection = tray_.client.raw();
    while (const x11::Owned<xcb_generic_event_t> event{xcb_poll_for_event(connection)}) {
        if ((event->response_type & 0x7F) != XCB_CLIENT_MESSAGE)
            continue;
        const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(*event);
        const auto* words = message.data.data32;
        if (message.type != tray_.client.atom("_NET_SYSTEM_TRAY_OPCODE") || words[1] != requestDock)
            continue;
        tray_.embed(words[2], tray_.addSocket({nextX_ -= 30, 3, 24, 22}));
        docked_.push_back(words[2]);
    }
}

} // namespace orrivane
