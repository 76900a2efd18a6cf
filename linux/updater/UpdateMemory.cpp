#include <linux/updater/UpdateMemory.h>

#include <linux/support/AtomicFile.h>
#include <linux/support/SmallFile.h>
#include <linux/support/Text.h>
#include <linux/support/UserFolders.h>

#include <cstdint>
#include <string_view>

namespace orrivane {

namespace {

constexpr std::string_view automaticName = "checks-automatically";
constexpr std::string_view lastCheckName = "last-check";
constexpr std::string_view skippedName = "skipped-version";
constexpr std::size_t longestValue = 128;

double secondsOf(std::string_view text) {
    return static_cast<double>(numberIn<std::int64_t>(text).value_or(0));
}

} // namespace

std::string UpdateMemory::userFile() {
    return UserFolders::file(UserFolders::ofThisUser().configuration, "orrivane/updates");
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
    const auto contents = readSmallFile(path_).value_or(std::string());
    for (std::string_view rest = contents; !rest.empty();) {
        const auto line = takeLine(rest);
        const auto equals = line.find('=');
        if (equals == std::string_view::npos || line.size() - equals > longestValue)
            continue;
        const auto name = line.substr(0, equals);
        const auto value = line.substr(equals + 1);
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
    static_cast<void>(replaceFile(path_, text));
}

} // namespace orrivane
