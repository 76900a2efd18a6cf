#pragma once

#include <Orrivane/support/Subscription.h>

#include <functional>
#include <string>
#include <string_view>

namespace orrivane {

/// What the system tells. The first five come from the workspace's own centre, the last from the
/// default one; a registration removes itself from the centre it came from.
enum class SystemNotification {
    didActivateApplication,
    willSleep,
    screensDidSleep,
    didWake,
    screensDidWake,
    didChangeScreenParameters,
};

/// The numbers are the application object's own.
enum class ActivationPolicy {
    regular = 0,
    accessory = 1, ///< no place among the running programs that the desktop shows, no menu bar
};

struct VersionStrings {
    std::string version; ///< what users see, "1.2.0"
    std::string build;   ///< counts up with every release
};

/// The desktop the program runs on.
class Workspace {
  public:
    virtual ~Workspace() = default;

    /// `notified` runs on the main thread, never inside this call.
    virtual Subscription observe(SystemNotification notification,
                                 std::function<void()> notified) = 0;

    /// Hands an address to whatever program opens it. False when it is no address or nothing opens
    /// it; callers may ignore that.
    virtual bool open(std::string_view address) = 0;
    /// Once, before anything is shown.
    virtual void setActivationPolicy(ActivationPolicy policy) = 0;
    /// Ends the program.
    virtual void terminate() = 0;
    /// Brings the program to the front.
    virtual void activate() = 0;
    [[nodiscard]] virtual VersionStrings versionStrings() = 0;
};

} // namespace orrivane
