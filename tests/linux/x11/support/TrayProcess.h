#pragma once

#include <ChildProcess.h>

#include <cstdint>
#include <string>

namespace orrivane::x11 {

/// An application with a tray icon, in a process of its own.
class TrayProcess {
  public:
    /// Returns when its icon's window exists; it is not docked yet.
    TrayProcess(const std::string& display, const std::string& directory,
                const std::string& windowClass, int width = 24);

    [[nodiscard]] std::uint32_t icon() const { return icon_; }
    [[nodiscard]] pid_t pid() const { return process_.pid(); }
    e2e::ChildProcess& process() { return process_; }
    /// How often this button was pressed on the icon so far.
    [[nodiscard]] int presses(int button) const;

  private:
    e2e::ChildProcess process_;
    std::uint32_t icon_ = 0;
};

} // namespace orrivane::x11
