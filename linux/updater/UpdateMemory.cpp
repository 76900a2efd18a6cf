#include <linux/updater/UpdateMemory.h>

#include <linux/support/AtomicFile.h>

#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <string_view>

namespace orrivane {

namespace {

constexpr std::string_view automaticName = "checks-automatically";
constexpr std::string_view lastCheckName = "last-check";
constexpr std::string_view skippedName = "skipped-version";
constexpr int mostLines = 64;
constexpr std::size_t longestValue = 128;

double secondsOf(std::string_view text) {
    std::int64_t seconds = 0;
    const auto* end = text.data() + text.size();
    const auto [stopped, error] = std::from_chars(text.data(), end, seconds);
    return error == std::errc() && stopped == end ? static_cast<double>(seconds) : 0;
}

} // namespace

std::string UpdateMemory::userFile() {
    const char* configuration = std::getenv("XDG_CONFIG_HOME");
    if (configuration && *configuration == '/')
        return std::string(configuration) + "/orrivane/updates";
    const char* home = std::getenv("HOME");
    return std::string(home ? home : "") + "/.config/orrivane/updates";
}

void UpdateMemory::setChecksAutomatically(bool automatically) {
    checksAutomatically_ = automatically;
    write();
}

void UpdateMemory::setLastCheck(double time) {
    lastCheck_ = time;
    write();
}

void UpdateMemory::setSkippedVersion(std::string version) {
    skippedVersion_ = std::move(version);
    write();
}

void UpdateMemory::read() {
    std::ifstream file(path_);
    std::string line;
    for (int count = 0; count < mostLines && std::getline(file, line); ++count) {
        const auto equals = line.find('=');
        if (equals == std::string::npos || line.size() - equals > longestValue)
            continue;
        const auto name = std::string_view(line).substr(0, equals);
        const auto value = std::string_view(line).substr(equals + 1);
        if (name == automaticName)
            checksAutomatically_ = value == "true";
        else if (name == lastCheckName)
            lastCheck_ = secondsOf(value);
        else if (name == skippedName)
            skippedVersion_ = value;
    }
}

// Without the file the next run only asks again: nothing to stop for.
void UpdateMemory::write() const {
    std::string text;
    const auto add = [&text](std::string_view name, std::string_view value) {
        text.append(name).append("=").append(value).append("\n");
    };
    add(automaticName, checksAutomatically_ ? "true" : "false");
    add(lastCheckName, std::to_string(static_cast<std::int64_t>(lastCheck_)));
    add(skippedName, skippedVersion_);
    replaceFile(path_, text);
}

} // namespace orrivane
