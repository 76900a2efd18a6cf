#pragma once

#include <cstdint>
#include <map>
#include <string>

#include <sys/types.h>

namespace orrivane::bench {

/// What a process has used so far, as the kernel counts it.
struct ProcessUse {
    struct Thread {
        std::string name;
        double cpuMilliseconds = 0;
        std::uint64_t wakeUps = 0; ///< voluntary switches: the thread waited and was woken
    };
    std::map<pid_t, Thread> threads;
    double pssMebibytes = 0;
    double privateMebibytes = 0; ///< pages nobody else maps

    /// Throws std::runtime_error when there is no such process.
    static ProcessUse of(pid_t process);
    /// What happened between `earlier` and this; memory as it is now. A thread that ended
    /// meanwhile is left out.
    [[nodiscard]] ProcessUse since(const ProcessUse& earlier) const;

    [[nodiscard]] double cpuMilliseconds() const;
    [[nodiscard]] std::uint64_t wakeUps() const;
};

} // namespace orrivane::bench
