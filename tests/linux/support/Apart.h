#pragma once

#include <csignal>
#include <functional>
#include <sys/wait.h>
#include <unistd.h>

namespace orrivane {

/// Whether `holds` says so in a process of its own: one that hangs there, or ends the process,
/// harms nobody and does not hold. Ends it after ten seconds.
inline bool holdsApart(const std::function<bool()>& holds) {
    constexpr unsigned bound = 10; // seconds
    const auto child = fork();
    if (child == 0) {
        alarm(bound);
        // What is thrown must end this process, not run on in a copy of the test.
        const auto answer = [&]() noexcept { return holds(); };
        _exit(answer() ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

/// The same as a user to whom files can be closed, as they cannot to root.
inline bool holdsForAnOrdinaryUser(const std::function<bool()>& holds) {
    constexpr uid_t nobody = 65534;
    return holdsApart([&] { return (getuid() != 0 || setuid(nobody) == 0) && holds(); });
}

} // namespace orrivane
