#include <linux/support/MenuBarPreferences.h>

#include <charconv>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orrivane {

namespace {

constexpr off_t largestFile = 1 << 20;

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r";
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::optional<std::int64_t> integer(std::string_view text) {
    std::int64_t value = 0;
    const auto* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || stop != end)
        return std::nullopt;
    return value;
}

void take(MenuBarPreferences& preferences, std::string_view line) {
    line = line.substr(0, line.find('#'));
    const auto sign = line.find('=');
    if (sign == std::string_view::npos)
        return;
    const auto key = trimmed(line.substr(0, sign));
    const auto value = integer(trimmed(line.substr(sign + 1)));
    if (!value)
        return;
    if (key == MenuBarPreferences::spacingKey)
        preferences.spacing = value;
    else if (key == MenuBarPreferences::selectionPaddingKey)
        preferences.selectionPadding = value;
}

std::optional<std::string> contents(int file) {
    struct stat status = {};
    if (fstat(file, &status) != 0 || !S_ISREG(status.st_mode) || status.st_size > largestFile)
        return std::nullopt;
    std::string text(static_cast<std::size_t>(status.st_size), '\0');
    std::size_t length = 0;
    while (length < text.size()) {
        const auto count = ::read(file, text.data() + length, text.size() - length);
        if (count <= 0)
            break;
        length += static_cast<std::size_t>(count);
    }
    text.resize(length);
    return text;
}

} // namespace

MenuBarPreferences MenuBarPreferences::parse(std::string_view text) {
    MenuBarPreferences preferences;
    while (!text.empty()) {
        const auto end = text.find('\n');
        take(preferences, text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return preferences;
}

MenuBarPreferences MenuBarPreferences::read(const std::string& path) {
    // A pipe under the file's name would else hold up whoever opens it.
    const int file = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (file < 0)
        return {};
    const auto text = contents(file);
    close(file);
    return text ? parse(*text) : MenuBarPreferences{};
}

std::string MenuBarPreferences::userFile() {
    constexpr const char* name = "/orrivane/menu-bar.conf";
    if (const char* folder = std::getenv("XDG_CONFIG_HOME"); folder && *folder == '/')
        return std::string(folder) + name;
    if (const char* home = std::getenv("HOME"); home && *home == '/')
        return std::string(home) + "/.config" + name;
    return {};
}

} // namespace orrivane
