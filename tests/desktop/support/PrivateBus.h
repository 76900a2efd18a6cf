#pragma once

#include "ChildProcess.h"

#include <optional>
#include <string>

namespace orrivane::e2e {

/// A D-Bus session bus of its own, with the machine's installed session services.
class PrivateBus {
  public:
    /// `environment` is also that of the services the bus starts; `directory` takes the
    /// configuration, the socket and the log.
    PrivateBus(Environment environment, const std::string& directory);

    const std::string& address() const { return address_; }
    ChildProcess& process() { return *process_; }

  private:
    std::string address_;
    std::optional<ChildProcess> process_;
};

} // namespace orrivane::e2e
