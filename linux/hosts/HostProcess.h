#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrivane {

/// The process behind a tray, as the kernel describes it.
struct HostProcess {
    std::int32_t id = 0;
    std::string name;                     ///< at most 15 bytes, as the kernel keeps it
    std::vector<std::string> arguments;   ///< the program's own name first
    std::string folder;                   ///< the one relative names start from
    std::vector<std::string> environment; ///< NAME=value, as it was when the process began

    /// Absent when it is gone, or goes meanwhile, or is another user's.
    static std::optional<HostProcess> read(std::int32_t id, const std::string& proc = "/proc");

    /// Absent when it is not set or empty.
    [[nodiscard]] std::optional<std::string> variable(std::string_view variable) const;
    /// `path` as this process understands it.
    [[nodiscard]] std::string absolute(const std::string& path) const;

    /// Sends `number` if the process is still this program and has a handler for the signal: most
    /// signals end a process that has none. False when nothing was sent.
    [[nodiscard]] bool signal(int number, const std::string& proc = "/proc") const;

    friend bool operator==(const HostProcess&, const HostProcess&) = default;
};

} // namespace orrivane
