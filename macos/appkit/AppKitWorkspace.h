#pragma once

#include <Orrivane/platform/Workspace.h>

namespace orrivane {

class AppKitWorkspace : public Workspace {
  public:
    Subscription observe(SystemNotification notification, std::function<void()> notified) override;
    /// False also for an address without a scheme, such as a path.
    bool open(std::string_view address) override;
    void setActivationPolicy(ActivationPolicy policy) override;
    /// On a later turn of the loop, because nothing that runs now is returned to: the process ends
    /// inside the application object. An open dialog does not stop it.
    void terminate() override;
    void activate() override;
    /// Those of the bundle, outside one those that were built in.
    [[nodiscard]] VersionStrings versionStrings() override;
};

} // namespace orrivane
