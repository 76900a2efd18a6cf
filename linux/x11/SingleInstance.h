#pragma once

#include <linux/x11/Connection.h>

#include <cstdint>
#include <functional>
#include <optional>

namespace orrivane::x11 {

/// What a second launch wants of the program that runs already on this display.
enum class InstanceCommand : std::uint32_t { open = 1, quit = 2 };

/// One program a display: whoever runs owns a selection, and a second launch finds it there.
class SingleInstance {
  public:
    explicit SingleInstance(Connection& connection);
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;
    ~SingleInstance();

    /// Becomes the running program; false while another one is, or when the server does not
    /// answer. From then on `commanded` hears the commands of others, on the main thread.
    [[nodiscard]] bool claim(std::function<void(InstanceCommand)> commanded);
    /// Tells the running program; false when there is none.
    bool tell(InstanceCommand command);
    /// The process of the program that runs, if that is not this one; 0 when it cannot be told.
    [[nodiscard]] std::optional<std::int32_t> runningElsewhere();

  private:
    // Absent when the server does not answer; 0: nobody else.
    [[nodiscard]] std::optional<std::uint32_t> owner();
    void handle(const xcb_generic_event_t& event);

    Connection& connection_;
    std::uint32_t window_ = 0;
    std::function<void(InstanceCommand)> commanded_;
    Subscription events_;
};

} // namespace orrivane::x11
