#include <linux/support/AutostartService.h>

#include <linux/support/AtomicFile.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string_view>
#include <unistd.h>
#include <utility>

namespace orrivane {

namespace {

// A quoted argument of an Exec line: backslash before what the quotes leave special, then the
// string escape of the file itself, which doubles every backslash; a percent sign stands double.
std::string quotedArgument(std::string_view text) {
    std::string result = "\"";
    for (const char c : text) {
        if (c == '\\')
            result += "\\\\\\\\";
        else if (c == '"' || c == '`' || c == '$')
            (result += "\\\\") += c;
        else if (c == '%')
            result += "%%";
        else
            result += c;
    }
    return result + "\"";
}

bool isSwitchedOff(std::istream& entry) {
    std::string line;
    bool off = false;
    bool inEntry = false;
    while (std::getline(entry, line)) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        if (line.starts_with('['))
            inEntry = line == "[Desktop Entry]";
        else if (inEntry && (line == "Hidden=true" || line == "X-GNOME-Autostart-enabled=false"))
            off = true;
    }
    return off;
}

} // namespace

AutostartService::AutostartService(std::string file, std::string program)
    : file_(std::move(file))
    , program_(std::move(program)) {}

LoginItemStatus AutostartService::status() {
    if (file_.empty())
        return LoginItemStatus::notFound;
    std::ifstream entry(file_);
    if (!entry)
        return LoginItemStatus::notRegistered;
    return isSwitchedOff(entry) ? LoginItemStatus::requiresApproval : LoginItemStatus::enabled;
}

std::optional<std::string> AutostartService::registerItem() {
    if (file_.empty())
        return "there is no home folder to keep the autostart entry in; set HOME";
    if (const auto problem = replaceFile(file_, entry(program_)))
        return file_ + " cannot be written (" + *problem + "); check the folder's permissions";
    return std::nullopt;
}

std::optional<std::string> AutostartService::unregisterItem() {
    if (file_.empty() || unlink(file_.c_str()) == 0 || errno == ENOENT)
        return std::nullopt;
    return file_ + " cannot be removed (" + std::strerror(errno) +
           "); check the folder's permissions";
}

std::string AutostartService::userFile() {
    constexpr const char* name = "/autostart/orrivane.desktop";
    if (const char* folder = std::getenv("XDG_CONFIG_HOME"); folder && *folder == '/')
        return std::string(folder) + name;
    if (const char* home = std::getenv("HOME"); home && *home == '/')
        return std::string(home) + "/.config" + name;
    return {};
}

std::string AutostartService::entry(const std::string& program) {
    return "[Desktop Entry]\n"
           "Type=Application\n"
           "Name=Orrivane\n"
           "Comment=Shows the status items that the notch hides\n"
           "Exec=" +
           quotedArgument(program) +
           "\n"
           "Icon=orrivane\n"
           "Terminal=false\n"
           "X-GNOME-Autostart-enabled=true\n";
}

} // namespace orrivane
