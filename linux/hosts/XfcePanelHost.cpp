#include <linux/hosts/XfcePanelHost.h>

#include <linux/hosts/BoundedProgram.h>
#include <linux/support/AtomicFile.h>
#include <linux/support/Text.h>

#include <charconv>
#include <chrono>
#include <cstdlib>
#include <unistd.h>

namespace orrivane {

namespace {

constexpr std::string_view pluginField = "plugin";
constexpr std::string_view widthField = "width"; // of an icon before it was made smaller
constexpr std::string_view tool = "xfconf-query";

std::string pathOf(int plugin, std::string_view property = {}) {
    auto path = "/plugins/plugin-" + std::to_string(plugin);
    return property.empty() ? path : path + "/" + std::string(property);
}

/// A setting as text, beside its name and the type the tool calls it by.
struct Setting {
    std::string_view name;
    std::string_view type;
    std::optional<std::string> value;
};

std::optional<std::string> text(std::optional<bool> value) {
    return value ? std::optional(std::string(*value ? "true" : "false")) : std::nullopt;
}

std::vector<Setting> settingsIn(const XfceTraySettings& values) {
    return {{"icon-size", "int",
             values.iconSize ? std::optional(std::to_string(*values.iconSize)) : std::nullopt},
            {"square-icons", "bool", text(values.squareIcons)},
            {"single-row", "bool", text(values.singleRow)}};
}

void take(XfceTraySettings& settings, std::string_view name, std::string_view value) {
    if (name == "icon-size") {
        if (const auto number = numberIn<int>(value))
            settings.iconSize = number;
    } else if (name == "square-icons") {
        settings.squareIcons = value == "true";
    } else if (name == "single-row") {
        settings.singleRow = value == "true";
    }
}

std::string prefixed(std::string_view prefix, std::string_view name) {
    return std::string(prefix) + "." + std::string(name);
}

// The record of the settings `own` and of what was made of them.
HostRecord::Fields recordOf(int plugin, const XfceTraySettings& own, const XfceTraySettings& set) {
    HostRecord::Fields fields{{std::string(pluginField), std::to_string(plugin)}};
    for (const auto& setting : settingsIn(own))
        if (setting.value)
            fields.emplace(prefixed("own", setting.name), *setting.value);
    for (const auto& setting : settingsIn(set))
        if (setting.value)
            fields.emplace(prefixed("set", setting.name), *setting.value);
    return fields;
}

int fieldNumber(const HostRecord::Fields& fields, std::string_view name) {
    return numberIn<int>(HostRecord::field(fields, name)).value_or(0);
}

int pluginIn(const HostRecord::Fields& fields) {
    return fieldNumber(fields, pluginField);
}

std::optional<std::string> settingOf(const HostRecord::Fields& fields, std::string_view prefix,
                                     std::string_view name) {
    const auto field = HostRecord::field(fields, prefixed(prefix, name));
    return field.empty() ? std::nullopt : std::optional(field);
}

Outcome unreadable(int plugin) {
    return Outcome::failure("the settings of " + pathOf(plugin) + " cannot be read");
}

// The user's settings: those of the record, except what has been changed since it was written.
XfceTraySettings ownOf(const XfceTraySettings& now, const HostRecord::Fields& fields) {
    XfceTraySettings own;
    for (const auto& setting : settingsIn(now)) {
        const bool isOurs = setting.value == settingOf(fields, "set", setting.name);
        const auto value = isOurs ? settingOf(fields, "own", setting.name) : setting.value;
        if (value)
            take(own, setting.name, *value);
    }
    return own;
}

} // namespace

std::string XfcePanelHost::limitation() {
    const char* path = std::getenv("PATH");
    std::string_view folders = path ? path : "/usr/bin:/bin";
    while (!folders.empty()) {
        const auto end = folders.find(':');
        const auto file = std::string(folders.substr(0, end)) + "/" + std::string(tool);
        if (access(file.c_str(), X_OK) == 0)
            return {};
        folders.remove_prefix(end == std::string_view::npos ? folders.size() : end + 1);
    }
    return "The tray of xfce4-panel can only be changed with xfconf-query, which is not installed.";
}

std::optional<std::string> XfcePanelHost::runQuery(const std::vector<std::string>& words) {
    constexpr std::chrono::milliseconds bound{1000};
    std::vector<std::string> command{std::string(tool), "-c", "xfce4-panel"};
    command.insert(command.end(), words.begin(), words.end());
    const auto result = BoundedProgram::run(command, bound);
    return result && result->status == 0 ? std::optional(result->output) : std::nullopt;
}

std::optional<XfceTraySettings> XfcePanelHost::parseSettings(std::string_view listing, int plugin) {
    const auto prefix = pathOf(plugin);
    std::optional<XfceTraySettings> settings;
    while (!listing.empty()) {
        const auto line = takeLine(listing);
        const auto nameEnd = line.find(' ');
        const auto valueBegin = line.find_last_of(' ');
        if (nameEnd == std::string_view::npos || !line.starts_with(prefix))
            continue;
        const auto name = line.substr(prefix.size(), nameEnd - prefix.size());
        const auto value = line.substr(valueBegin + 1);
        if (name.empty() && value == "systray")
            settings.emplace();
        else if (settings && name.starts_with('/'))
            take(*settings, name.substr(1), value);
    }
    return settings;
}

std::optional<std::vector<std::string>> XfcePanelHost::parseArray(std::string_view output) {
    constexpr std::string_view heading = "Value is an array with ";
    auto line = takeLine(output);
    if (!line.starts_with(heading) || !takeLine(output).empty())
        return std::nullopt;
    line.remove_prefix(heading.size());
    std::size_t count = 0;
    std::from_chars(line.data(), line.data() + line.size(), count);
    std::vector<std::string> values;
    while (!output.empty())
        values.emplace_back(takeLine(output));
    return values.size() == count ? std::optional(values) : std::nullopt;
}

std::optional<XfceTraySettings> XfcePanelHost::settings(int plugin) const {
    const auto listing = query_({"-p", pathOf(plugin), "-l", "-v"});
    return listing ? parseSettings(*listing, plugin) : std::nullopt;
}

Outcome XfcePanelHost::write(int plugin, const XfceTraySettings& from,
                             const XfceTraySettings& to) const {
    const auto before = settingsIn(from);
    const auto after = settingsIn(to);
    auto written = Outcome::success();
    for (std::size_t i = 0; i < after.size(); ++i) {
        const auto& setting = after[i];
        if (setting.value == before[i].value)
            continue;
        std::vector<std::string> words{"-p", pathOf(plugin, setting.name)};
        if (setting.value)
            words.insert(words.end(),
                         {"-n", "-t", std::string(setting.type), "--set=" + *setting.value});
        else
            words.emplace_back("-r");
        if (!query_(words) && written)
            written = Outcome::failure(pathOf(plugin, setting.name) + " cannot be set");
    }
    return written;
}

Outcome XfcePanelHost::apply(int plugin, int reduction, const XfceTray::Measures& measures) const {
    const FileLock lock(record_.path());
    if (auto mine = record_.heldBy(lock); !mine)
        return mine;
    const auto now = settings(plugin);
    if (!now)
        return unreadable(plugin);
    auto own = *now;
    auto seen = measures;
    const auto record = record_.read();
    if (record && pluginIn(*record) == plugin) {
        own = ownOf(*now, *record);
        // What shows now is already ours.
        seen.iconWidth = fieldNumber(*record, widthField);
    } else if (record) {
        // Nobody can wait for a plugin that is gone for good.
        static_cast<void>(giveBack(*record));
    }
    const auto wanted = XfceTray::tightened(own, reduction, seen);
    auto fields = recordOf(plugin, own, wanted);
    fields.emplace(widthField, std::to_string(seen.iconWidth));
    // Before the settings: what is changed must never be unknown.
    if (wanted != own)
        if (auto recorded = record_.write(fields); !recorded)
            return recorded;
    if (auto written = write(plugin, *now, wanted); !written)
        return written;
    return wanted == own ? record_.restore(std::nullopt) : Outcome::success();
}

Outcome XfcePanelHost::reset() const {
    if (!record_.exists())
        return Outcome::success();
    const FileLock lock(record_.path());
    if (auto mine = record_.heldBy(lock); !mine)
        return mine;
    const auto record = record_.read();
    return record ? giveBack(*record) : Outcome::failure(record_.path() + " cannot be read");
}

Outcome XfcePanelHost::giveBack(const HostRecord::Fields& fields) const {
    const int plugin = pluginIn(fields);
    const auto now = settings(plugin);
    if (!now)
        return unreadable(plugin);
    if (auto written = write(plugin, *now, ownOf(*now, fields)); !written)
        return written;
    return record_.restore(std::nullopt);
}

bool XfcePanelHost::reorder(int plugin, const std::vector<XfceTray::Icon>& icons, std::size_t moved,
                            double toX) const {
    const auto path = pathOf(plugin, "known-legacy-items");
    const auto output = query_({"-p", path});
    const auto known = output ? parseArray(*output) : std::nullopt;
    if (!known)
        return false;
    const auto order = XfceTray::reordered(*known, icons, moved, toX);
    if (!order)
        return false;
    std::vector<std::string> words{"-p", path, "-n", "-a"};
    for (const auto& name : *order)
        words.insert(words.end(), {"-t", "string", "--set=" + name});
    return query_(words).has_value();
}

} // namespace orrivane
