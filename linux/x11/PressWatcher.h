#pragma once

#include <Orrivane/platform/MainLoop.h>
#include <Orrivane/support/ObserverList.h>

#include <linux/x11/Connection.h>

#include <cstdint>
#include <functional>
#include <memory>

namespace orrivane::x11 {

/// Tells of presses of a mouse button wherever they are made: also on docks and wallpapers, which
/// take no keyboard, so that no window learns of them by losing it. The server is asked only while
/// somebody watches; one that lacks the extension tells nothing.
class PressWatcher {
  public:
    /// Both outlive it.
    PressWatcher(Connection& connection, MainLoop& loop);

    /// `pressed` is called for every press of the left, middle or right button until the handle
    /// dies, which must be before this. It is called from the loop, because events are also read in
    /// the middle of other work.
    [[nodiscard]] Subscription watch(std::function<void()> pressed);

  private:
    void prepare();
    void handle(const xcb_generic_event_t& event);
    void select(bool watching);

    Connection& connection_;
    MainLoop& loop_;
    bool prepared_ = false;
    std::uint8_t opcode_ = 0; // 0: the server lacks the extension
    ObserverList<> watchers_;
    Subscription events_;
    std::shared_ptr<PressWatcher*> self_; // tells posted work that this is gone
};

} // namespace orrivane::x11
