#include <linux/support/AutostartService.h>

#include <linux/support/AtomicFile.h>
#include <linux/support/SmallFile.h>
#include <linux/support/Text.h>
#include <linux/support/UserFolders.h>

#include <cerrno>
#include <cstring>
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

LoginItemStatus statusOf(std::string_view entry) {
    bool inEntry = false;
    bool starts = false;
    bool off = false;
    while (!entry.empty()) {
        const auto words = trimmed(takeLine(entry));
        if (words.starts_with('[')) {
            inEntry = words == "[Desktop Entry]";
            continue;
        }
        const auto sign = words.find('=');
        if (!inEntry || sign == std::string_view::npos)
            continue;
        const auto key = trimmed(words.substr(0, sign));
        const auto value = trimmed(words.substr(sign + 1));
        starts = starts || (key == "Exec" && !value.empty());
        off = off || (key == "Hidden" && value == "true") ||
              (key == "X-GNOME-Autostart-enabled" && value == "false");
    }
    if (off)
        return LoginItemStatus::requiresApproval;
    return starts ? LoginItemStatus::enabled : LoginItemStatus::notRegistered;
}

} // namespace

AutostartService::AutostartService(std::string file, std::string program)
    : file_(std::move(file))
    , program_(std::move(program)) {}

LoginItemStatus AutostartService::status() {
    if (file_.empty())
        return LoginItemStatus::notFound;
    const auto entry = readSmallFile(file_);
    return entry ? statusOf(*entry) : LoginItemStatus::notRegistered;
}

std::optional<std::string> AutostartService::registerItem() {
    if (file_.empty())
        return "there is no home folder to keep the autostart entry in; set HOME";
    if (const auto written = replaceFile(file_, entry(program_)); !written)
        return file_ + " cannot be written (" + written.text() +
               "); check the folder's permissions";
    return std::nullopt;
}

std::optional<std::string> AutostartService::unregisterItem() {
    if (file_.empty() || unlink(file_.c_str()) == 0 || errno == ENOENT)
        return std::nullopt;
    return file_ + " cannot be removed (" + std::strerror(errno) +
           "); check the folder's permissions";
}

std::string AutostartService::userFile() {
    return UserFolders::file(UserFolders::ofThisUser().configuration, "autostart/orrivane.desktop");
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
