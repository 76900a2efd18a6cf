#pragma once

#include <string>
#include <string_view>

namespace orrivane {

/// Where the user's files are (freedesktop.org, "XDG Base Directory Specification"). Absolute;
/// empty where there is no home, and then nothing is kept.
struct UserFolders {
    /// What the environment and the user database say; empty where they say nothing.
    struct Sources {
        std::string configuration; ///< XDG_CONFIG_HOME
        std::string cache;         ///< XDG_CACHE_HOME
        std::string home;          ///< HOME
        std::string entry;         ///< the home in the user database
    };

    std::string configuration;
    std::string cache;

    /// A path that is not absolute counts as none; HOME comes before the user database.
    static UserFolders from(const Sources& sources);
    static UserFolders ofThisUser();

    /// `name`, a path from there, in a folder of these; empty where there is no such folder.
    static std::string file(const std::string& folder, std::string_view name);
};

} // namespace orrivane
