#pragma once

#include <map>
#include <string>
#include <vector>

#include <sys/types.h>

namespace orrivane::desktop {

using Environment = std::map<std::string, std::string>;

struct Launch {
    std::vector<std::string> arguments; ///< the program first; looked for in PATH without a slash
    Environment environment;
    std::string output; ///< file for both output streams; empty: this program's own
    int inherited = -1; ///< a descriptor that the program keeps; -1: none
};

/// Starts a program in a process group of its own. It dies with this process, whatever ends that.
/// Negative when it could not be started at all; one that is not there ends with status 127.
pid_t spawn(const Launch& launch);

/// Ends all of them and all that they have left behind: asked first, after two seconds forced.
/// Returns when none is left. This process must be a subreaper.
void endAll(const std::vector<pid_t>& groups);

} // namespace orrivane::desktop
