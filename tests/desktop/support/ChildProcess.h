#pragma once

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

namespace orrivane::e2e {

/// The whole environment of a process; nothing is inherited beside it.
using Environment = std::map<std::string, std::string>;

/// How a process ended: by `exit` (code) or by a signal.
struct ExitStatus {
    std::optional<int> code;
    std::optional<int> signal;
    bool operator==(const ExitStatus&) const = default;
};

/// A program with a process group of its own. Its output goes to a file; destruction kills the
/// whole group, and the death of the test kills the program.
class ChildProcess {
  public:
    struct Options {
        std::vector<std::string> arguments; ///< the program (found by PATH) and what follows
        Environment environment;
        std::string logFile;          ///< standard output and error
        std::vector<int> keepOpen;    ///< descriptors the program shall inherit
        std::string workingDirectory; ///< "/" when empty
    };

    /// Throws std::runtime_error when no process can be made. A program that cannot be executed
    /// ends with code 127.
    explicit ChildProcess(Options options);
    ~ChildProcess();
    ChildProcess(ChildProcess&& other) noexcept;
    ChildProcess& operator=(ChildProcess&& other) noexcept;
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    pid_t pid() const { return pid_; }
    const std::string& name() const { return name_; }
    std::string log() const;

    bool isRunning();
    /// Absent while it runs.
    std::optional<ExitStatus> exitStatus();
    /// Absent when it still ran at the bound.
    std::optional<ExitStatus> wait(std::chrono::milliseconds bound);

    void stop();      ///< SIGSTOP to the group; returns when the process is stopped
    void resume();    ///< SIGCONT to the group
    void kill();      ///< SIGKILL to the group, reaped on return
    void interrupt(); ///< SIGINT to the process
    /// SIGTERM to the process; its status, or absent when it did not end within `bound`.
    std::optional<ExitStatus> terminate(std::chrono::milliseconds bound);

  private:
    bool reap();
    void signalGroup(int number) const;

    pid_t pid_ = -1;
    std::string name_;
    std::string logFile_;
    std::optional<ExitStatus> status_;
    bool groupEnded_ = false;
};

/// True when `program` is an executable file, looked up in PATH if it has no slash.
bool isInstalled(const std::string& program);

/// Makes this process the parent of whatever its descendants leave behind.
void adoptOrphans();

/// Kills adopted processes that no ChildProcess owns; call after the owners are gone.
/// Returns how many there were.
int endOrphans();

} // namespace orrivane::e2e
