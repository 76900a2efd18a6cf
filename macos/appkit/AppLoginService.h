#pragma once

#include <Orrivane/platform/LoginService.h>

namespace orrivane {

/// The system's login item for the bundle this program runs from, which must be signed. The user
/// may have to approve it in the settings.
class AppLoginService : public LoginService {
  public:
    [[nodiscard]] LoginItemStatus status() override;
    [[nodiscard]] std::optional<std::string> registerItem() override;
    [[nodiscard]] std::optional<std::string> unregisterItem() override;
};

} // namespace orrivane
