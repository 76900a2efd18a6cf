#include <linux/hosts/Tint2Host.h>

#include <linux/hosts/Tint2Config.h>
#include <linux/support/AtomicFile.h>

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

std::string fieldOf(const HostRecord::Fields& fields, std::string_view name) {
    const auto found = fields.find(name);
    return found == fields.end() ? std::string() : found->second;
}

// `text` as it was before `fields` were made; absent where the user has written another line since.
std::optional<std::string> undone(std::string_view text, const HostRecord::Fields& fields) {
    const auto written = Tint2Config::find(text, fieldOf(fields, setField));
    // Only while it counts: below a line of the user's it would be that line which is undone.
    if (!written || Tint2Config::paddingLine(text)->data() != written->data())
        return std::nullopt;
    const auto own = fields.find(ownField);
    return own != fields.end()
               ? Tint2Config::replaced(text, *written, own->second)
               : Tint2Config::removed(text, *written, fieldOf(fields, separatorField));
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
    const auto isOurs = record && fieldOf(*record, fileField) == configFile;
    const auto before = isOurs ? undone(*contents, *record) : std::nullopt;
    const auto line = Tint2Config::paddingLine(before ? *before : *contents);
    if (!line || Tint2Config::gap(*line) <= 0)
        return "The icons in this tray already stand without a gap.";
    return {};
}

bool Tint2Host::apply(const std::string& configFile, int reduction) const {
    if (!record_.isKept())
        return false;
    const FileLock lock(record_.path());
    if (!lock.isHeld())
        return false;
    const auto record = record_.read();
    // Another file was in use then: it is given back before this one is taken.
    if (record && fieldOf(*record, fileField) != configFile && !giveBack(*record))
        return false;
    const auto contents = readSmallFile(configFile);
    if (!contents)
        return false;
    const auto isOurs = record && fieldOf(*record, fileField) == configFile;
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
        if (!record_.write(fields))
            return false;
    }
    if (after != *contents && replaceFile(configFile, after)) {
        record_.restore(record);
        return false;
    }
    if (wanted == gap)
        record_.restore(std::nullopt);
    return true;
}

bool Tint2Host::reset() const {
    if (!record_.exists())
        return true;
    const FileLock lock(record_.path());
    const auto record = lock.isHeld() ? record_.read() : std::nullopt;
    return record && giveBack(*record);
}

bool Tint2Host::giveBack(const HostRecord::Fields& fields) const {
    const auto file = fieldOf(fields, fileField);
    const auto contents = readSmallFile(file);
    if (!contents && access(file.c_str(), F_OK) == 0)
        return false;
    const auto before = contents ? undone(*contents, fields) : std::nullopt;
    if (before && replaceFile(file, *before))
        return false;
    record_.restore(std::nullopt);
    return true;
}

bool Tint2Host::reload(const HostProcess& process) {
    return process.signal(SIGUSR1);
}

} // namespace orrivane
