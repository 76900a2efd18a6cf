#include <linux/support/UserFolders.h>

#include <cstdlib>
#include <pwd.h>
#include <unistd.h>
#include <vector>

namespace orrivane {

namespace {

bool isAbsolute(std::string_view path) {
    return path.starts_with('/');
}

std::string variable(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

std::string homeOfEntry() {
    constexpr std::size_t longestEntry = 16 << 10; // bytes
    std::vector<char> text(longestEntry);
    passwd entry = {};
    passwd* found = nullptr;
    if (getpwuid_r(getuid(), &entry, text.data(), text.size(), &found) != 0 || !found)
        return {};
    return found->pw_dir ? found->pw_dir : "";
}

std::string folderOf(const std::string& configured, const std::string& home, const char* usual) {
    return isAbsolute(configured) ? configured : UserFolders::file(home, usual);
}

} // namespace

UserFolders UserFolders::from(const Sources& sources) {
    std::string home;
    if (isAbsolute(sources.home))
        home = sources.home;
    else if (isAbsolute(sources.entry))
        home = sources.entry;
    return {folderOf(sources.configuration, home, ".config"),
            folderOf(sources.cache, home, ".cache")};
}

UserFolders UserFolders::ofThisUser() {
    Sources sources{variable("XDG_CONFIG_HOME"), variable("XDG_CACHE_HOME"), variable("HOME"), {}};
    // The database may be on another machine.
    if (!isAbsolute(sources.home))
        sources.entry = homeOfEntry();
    return from(sources);
}

std::string UserFolders::file(const std::string& folder, std::string_view name) {
    if (folder.empty())
        return {};
    return folder + (folder.ends_with('/') ? "" : "/") + std::string(name);
}

} // namespace orrivane
