#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace orrivane {

/// A program that is waited for, but not for ever. Blocks its thread, so never the main one.
struct BoundedProgram {
    struct Result {
        int status = 0; ///< what it exited with; 128 and the number when a signal ended it
        std::string output;
    };

    /// Runs `words`, the program first (looked up in PATH where it has no slash), with its words in
    /// plain English. Absent when it could not be started, wrote more than a megabyte, or had not
    /// ended within `bound`; it is then ended.
    static std::optional<Result> run(const std::vector<std::string>& words,
                                     std::chrono::milliseconds bound);
};

} // namespace orrivane
