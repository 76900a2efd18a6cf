#include <linux/hosts/Tint2Host.h>

#include <linux/hosts/Tint2Config.h>
#include <linux/support/AtomicFile.h>
#include <linux/support/SmallFile.h>

#include <algorithm>
#include <csignal>
#include <unistd.h>

namespace orrivane {

namespace {

// Fields of the record.
constexpr std::string_view fileField = "file";
constexpr std::string_view ownField = "own"; // none: the user has no such line
constexpr std::string_view setField = "set";
constexpr std::string_view separatorField = "separator";

constexpr std::string_view newLine = "systray_padding = 0 0 0";

Outcome unreadable(const std::string& file) {
    return Outcome::failure(file + " cannot be read");
}

Outcome unwritten(const std::string& file, const Outcome& outcome) {
    return Outcome::failure(file + " cannot be written (" + outcome.text() + ")");
}

// `text` as it was before `fields` were made; absent where the user has written another line since.
std::optional<std::string> undone(std::string_view text, const HostRecord::Fields& fields) {
    const auto written = Tint2Config::find(text, HostRecord::field(fields, setField));
    // Only while it counts: below a line of the user's it would be that line which is undone.
    if (!written || Tint2Config::paddingLine(text)->data() != written->data())
        return std::nullopt;
    const auto own = fields.find(ownField);
    return own != fields.end()
               ? Tint2Config::replaced(text, *written, own->second)
               : Tint2Config::removed(text, *written, HostRecord::field(fields, separatorField));
}

} // namespace

std::string Tint2Host::configFile(const HostProcess& process) {
    const auto& words = process.arguments;
    for (std::size_t i = 1; i + 1 < words.size(); ++i)
        if (words[i] == "-c")
            return process.absolute(words[i + 1]);
    if (words.size() > 1 && !words.back().empty() && !words.back().starts_with('-'))
        return process.absolute(words.back());
    if (const auto folder = process.variable("XDG_CONFIG_HOME"))
        return process.absolute(*folder + "/tint2/tint2rc");
    if (const auto home = process.variable("HOME"))
        return *home + "/.config/tint2/tint2rc";
    return {};
}

std::string Tint2Host::limitation(const std::string& configFile) const {
    const auto contents = readSmallFile(configFile);
    if (!contents || access(configFile.c_str(), W_OK) != 0)
        return "The configuration file of tint2 cannot be changed; the spacing is stored all the "
               "same.";
    const auto record = record_.read();
    const auto isOurs = record && HostRecord::field(*record, fileField) == configFile;
    const auto before = isOurs ? undone(*contents, *record) : std::nullopt;
    const auto line = Tint2Config::paddingLine(before ? *before : *contents);
    if (!line || Tint2Config::gap(*line) <= 0)
        return "The icons in this tray already stand without a gap.";
    return {};
}

Outcome Tint2Host::apply(const std::string& configFile, int reduction) const {
    const FileLock lock(record_.path());
    if (auto mine = record_.heldBy(lock); !mine)
        return mine;
    const auto record = record_.read();
    // Another file was in use then: it is given back before this one is taken.
    if (record && HostRecord::field(*record, fileField) != configFile)
        if (auto given = giveBack(*record); !given)
            return given;
    const auto contents = readSmallFile(configFile);
    if (!contents)
        return unreadable(configFile);
    const auto isOurs = record && HostRecord::field(*record, fileField) == configFile;
    const auto before = isOurs ? undone(*contents, *record) : std::nullopt;
    const std::string own = before ? *before : *contents;

    const auto line = Tint2Config::paddingLine(own);
    const int gap = line ? Tint2Config::gap(*line) : 0;
    const int wanted =
        std::max(std::min(gap, 0), std::min(gap - reduction, std::max(gap, widestGap)));
    HostRecord::Fields fields{{std::string(fileField), configFile}};
    std::string after = own;
    if (wanted != gap) {
        const auto written = Tint2Config::withGap(line ? *line : newLine, wanted);
        fields.emplace(setField, written);
        if (line)
            fields.emplace(ownField, *line);
        else
            fields.emplace(separatorField, Tint2Config::separator(own));
        after =
            line ? Tint2Config::replaced(own, *line, written) : Tint2Config::appended(own, written);
        // Before the file: what is changed must never be unknown.
        if (auto recorded = record_.write(fields); !recorded)
            return recorded;
    }
    if (after != *contents)
        if (const auto replaced = replaceFile(configFile, after); !replaced)
            return withRecordBack(unwritten(configFile, replaced), record);
    return wanted == gap ? record_.restore(std::nullopt) : Outcome::success();
}

Outcome Tint2Host::withRecordBack(const Outcome& problem,
                                  const std::optional<HostRecord::Fields>& record) const {
    const auto restored = record_.restore(record);
    return Outcome::failure(problem.text() + (restored ? "" : "; " + restored.text()));
}

Outcome Tint2Host::reset() const {
    if (!record_.exists())
        return Outcome::success();
    const FileLock lock(record_.path());
    if (auto mine = record_.heldBy(lock); !mine)
        return mine;
    const auto record = record_.read();
    return record ? giveBack(*record) : unreadable(record_.path());
}

Outcome Tint2Host::giveBack(const HostRecord::Fields& fields) const {
    const auto file = HostRecord::field(fields, fileField);
    const auto contents = readSmallFile(file);
    if (!contents && access(file.c_str(), F_OK) == 0)
        return unreadable(file);
    if (const auto before = contents ? undone(*contents, fields) : std::nullopt)
        if (const auto replaced = replaceFile(file, *before); !replaced)
            return unwritten(file, replaced);
    return record_.restore(std::nullopt);
}

bool Tint2Host::reload(const HostProcess& process) {
    return process.signal(SIGUSR1);
}

} // namespace orrivane
