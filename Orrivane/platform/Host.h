#pragma once

#include <Orrivane/support/Geometry.h>

#include <memory>
#include <optional>
#include <string>

namespace orrivane {

struct Platform;

/// The process's one tie to its platform: makes the ports and runs the loop.
class Host {
  public:
    virtual ~Host() = default;

    /// Valid as long as the host.
    [[nodiscard]] virtual const Platform& platform() = 0;
    /// Runs the loop to the program's end and gives the exit status.
    virtual int run() = 0;

    /// `argc` and `argv` live as long as the process. Null when the program cannot work here:
    /// `problem` is then one sentence that says what is missing and what to do.
    static std::unique_ptr<Host> create(int& argc, char** argv, std::string& problem);

    /// Keeps the user's cutout for the next start. Absent on success, else one sentence.
    static std::optional<std::string> storeCutout(const Rect& pixels);
};

} // namespace orrivane
