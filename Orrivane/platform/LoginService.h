#pragma once

#include <optional>
#include <string>

namespace orrivane {

/// The numbers are the service-management framework's own.
enum class LoginItemStatus { notRegistered = 0, enabled = 1, requiresApproval = 2, notFound = 3 };

/// Launch at login. Failures come back as the system's error text; absent means success.
class LoginService {
  public:
    virtual ~LoginService() = default;

    [[nodiscard]] virtual LoginItemStatus status() = 0;
    [[nodiscard]] virtual std::optional<std::string> registerItem() = 0;
    [[nodiscard]] virtual std::optional<std::string> unregisterItem() = 0;
};

} // namespace orrivane
