#pragma once

#include <tests/macos/fakes/Values.h>

#include <map>

namespace orrivane::fakes {

/// The global domain of the current user on this host; any other place is a mistake.
struct PreferenceStore {
    using Values = std::map<std::string, Any>;

    Values values;  ///< as this process sees them
    Values written; ///< as a new process would
    bool isWritable = true;

    static PreferenceStore& shared();
};

} // namespace orrivane::fakes
