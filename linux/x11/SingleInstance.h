#pragma once

#include <Orrivane/platform/MainLoop.h>

#include <linux/x11/Connection.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace orrivane::x11 {

/// What a second launch wants of the program that runs already on this display.
enum class InstanceCommand : std::uint32_t { open = 1, quit = 2 };

/// One program a display: whoever runs owns a selection, and a second launch finds it there.
class SingleInstance {
  public:
    /// Both outlive it.
    SingleInstance(Connection& connection, MainLoop& loop);
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;
    ~SingleInstance();

    /// Becomes the running program; false while another one is, or when the server does not
    /// answer. From then on `commanded` hears the commands of others, from the loop: events are
    /// also read in the middle of other work, and while the program still starts.
    [[nodiscard]] bool claim(std::function<void(InstanceCommand)> commanded);
    /// Tells the running program; false when there is none.
    bool tell(InstanceCommand command);
    /// The process of the program that runs, if that is not this one; 0 when it cannot be told.
    [[nodiscard]] std::optional<std::int32_t> runningElsewhere();

  private:
    // Absent when the server does not answer; 0: nobody else.
    [[nodiscard]] std::optional<std::uint32_t> owner();
    void handle(const xcb_generic_event_t& event);
    void pass(InstanceCommand command);

    Connection& connection_;
    MainLoop& loop_;
    std::uint32_t window_ = 0;
    std::function<void(InstanceCommand)> commanded_;
    Subscription events_;
    std::shared_ptr<SingleInstance*> self_; // tells posted work that this is gone
};

} // namespace orrivane::x11
