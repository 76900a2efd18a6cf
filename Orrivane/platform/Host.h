#pragma once

#include <Orrivane/WindowCensus.h>
#include <Orrivane/support/Geometry.h>
#include <Orrivane/support/Task.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace orrivane {

class ApplicationDelegate;
struct Platform;
struct ShellPlatform;

/// What came of a launch: this process is the program, the one that was it already shows its
/// window, or neither, because nobody answers.
enum class Claim { made, toldTheOther, unanswered };

/// The process's one tie to its platform: makes the ports and runs the loop.
class Host {
  public:
    virtual ~Host() = default;

    /// Both valid as long as the host.
    [[nodiscard]] virtual const Platform& platform() = 0;
    [[nodiscard]] virtual const ShellPlatform& shellPlatform() = 0;

    /// Becomes the program that runs on this desktop, or has the one that is it show its window.
    /// What others command from then on is obeyed once the loop runs.
    [[nodiscard]] virtual Claim claim() = 0;
    /// The process that is the program on this desktop, if that is not this one; 0 when it does not
    /// say which it is.
    [[nodiscard]] virtual std::optional<std::int32_t> runningElsewhere() = 0;
    /// Tells that process to end; false when there is none.
    virtual bool quitOther() = 0;

    /// One sentence where items cannot be moved, or the spacing cannot be changed, on this desktop
    /// as it is now; empty where it can.
    [[nodiscard]] virtual std::string arrangeLimitation() = 0;
    [[nodiscard]] virtual std::string squeezeLimitation() = 0;

    /// Moves an item to `toX` (global points) where the desktop as it is now has a way of its own;
    /// true when it was told of a new order. Absent where a drag with Command held is the way.
    [[nodiscard]] virtual std::optional<Task<bool>> moveItem(const StatusItemWindow& /*item*/,
                                                             double /*toX*/) {
        return std::nullopt;
    }

    /// Runs the loop to the program's end and gives the exit status. `delegate` outlives the call.
    virtual int run(ApplicationDelegate& delegate) = 0;

    /// `argc` and `argv` live as long as the process. Null when the program cannot work here:
    /// `problem` is then one sentence that says what is missing and what to do.
    static std::unique_ptr<Host> create(int& argc, char** argv, std::string& problem);

    /// Keeps the user's cutout for the next start. Absent on success, else one sentence.
    static std::optional<std::string> storeCutout(const Rect& pixels);
};

} // namespace orrivane
