#pragma once

#include <Orrivane/support/ObserverList.h>

#include <linux/x11/Connection.h>

#include <cstdint>
#include <functional>

namespace orrivane::x11 {

/// Tells of presses of a mouse button wherever they are made: also on docks and wallpapers, which
/// take no keyboard, so that no window learns of them by losing it. The server is asked only while
/// somebody watches; one that lacks the extension tells nothing.
class PressWatcher {
  public:
    /// `connection` outlives it.
    explicit PressWatcher(Connection& connection);

    /// `pressed` is called for every press of the left, middle or right button until the handle
    /// dies, which must be before this.
    [[nodiscard]] Subscription watch(std::function<void()> pressed);

  private:
    void prepare();
    void handle(const xcb_generic_event_t& event) const;
    void select(bool watching);

    Connection& connection_;
    bool prepared_ = false;
    std::uint8_t opcode_ = 0; // 0: the server lacks the extension
    ObserverList<> watchers_;
    Subscription events_;
};

} // namespace orrivane::x11
