#include "Desk.h"

#include <stdexcept>

namespace orrivane::x11 {

Connection& DeskWorld::open() {
    if (!connection_) {
        std::string problem;
        connection_ = Connection::open(server.display().c_str(), problem);
        if (!connection_)
            throw std::runtime_error(problem);
    }
    return *connection_;
}

X11Platform& DeskWorld::port() {
    if (!port_)
        port_ = std::make_unique<X11Platform>(
            open(), loop,
            X11Platform::Settings{scale, cutoutFile(), toolkit, globalMenu, deviceTree});
    return *port_;
}

void DeskWorld::settle() {
    // The server answers in order, so what came before this answer has been sent before it.
    const auto answered = e2e::waitFor("the server answers", [this] {
        return open().synchronize(std::chrono::steady_clock::now() + e2e::defaultBound);
    });
    if (!answered)
        throw std::runtime_error(answered.message());
}

void DeskWorld::pump() {
    port();
    settle();
    open().drain();
    loop.runUntilIdle();
}

DeskWorld::Windows DeskWorld::icons() {
    settle();
    // A loaded machine may leave the server without the processor for longer than a read waits.
    EXPECT_TRUE(e2e::waitFor("the server answers", [this] { return tree().update(); }));
    return tree().icons();
}

bool DeskWorld::eventually(const std::function<bool()>& holds) {
    return e2e::waitFor("the port notices", [&] {
        pump();
        return holds();
    });
}

unsigned DeskWorld::requestsSent() {
    return xcb_no_operation(open().raw()).sequence;
}

} // namespace orrivane::x11
