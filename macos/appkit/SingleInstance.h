#pragma once

#include <macos/system/CFRef.h>

#include <CoreFoundation/CoreFoundation.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace orrivane {

/// What a second launch wants of the program that runs already.
enum class InstanceCommand : SInt32 { identify = 0, open = 1, quit = 2 };

/// One program a login session, be it in its bundle or out of it: whoever runs has a message port,
/// and a second launch finds it there. Main thread only.
class SingleInstance {
  public:
    SingleInstance() = default;
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;
    ~SingleInstance();

    /// Becomes the running program; false while another one is. From then on `commanded` hears what
    /// others want, on a later turn of the loop.
    [[nodiscard]] bool claim(std::function<void(InstanceCommand)> commanded);
    /// Tells the running program; false when there is none.
    bool tell(InstanceCommand command);
    /// The process of the program that runs, if that is not this one; 0 when it does not answer.
    [[nodiscard]] std::optional<std::int32_t> runningElsewhere();

  private:
    static CFDataRef receive(CFMessagePortRef port, SInt32 message, CFDataRef data, void* self);
    /// Empty when nobody else runs.
    [[nodiscard]] CFRef<CFMessagePortRef> other() const;

    CFRef<CFMessagePortRef> port_; // empty unless this is the running program
    std::shared_ptr<std::function<void(InstanceCommand)>> commanded_;
};

} // namespace orrivane
