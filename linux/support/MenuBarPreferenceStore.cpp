#include <linux/support/MenuBarPreferenceStore.h>

#include <linux/support/AtomicFile.h>
#include <linux/support/MenuBarPreferences.h>
#include <linux/support/SmallFile.h>
#include <linux/support/Text.h>

#include <utility>
#include <vector>

namespace orrivane {

namespace {

std::string_view keyOf(std::string_view line) {
    line = line.substr(0, line.find('#'));
    const auto sign = line.find('=');
    return sign == std::string_view::npos ? std::string_view() : trimmed(line.substr(0, sign));
}

std::vector<std::string_view> linesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty())
        lines.push_back(takeLine(text));
    return lines;
}

std::string lineFor(std::string_view key, std::int64_t value, std::string_view before) {
    const auto comment = before.find('#');
    auto line = std::string(key) + " = " + std::to_string(value);
    return comment == std::string_view::npos
               ? line
               : line + " " + std::string(trimmed(before.substr(comment)));
}

} // namespace

MenuBarPreferenceStore::MenuBarPreferenceStore(std::string path)
    : path_(std::move(path)) {}

std::optional<std::int64_t> MenuBarPreferenceStore::copyValue(std::string_view key) {
    if (const auto pending = pending_.find(key); pending != pending_.end())
        return pending->second;
    const auto stored = MenuBarPreferences::read(path_);
    if (key == MenuBarPreferences::spacingKey)
        return stored.spacing;
    return key == MenuBarPreferences::selectionPaddingKey ? stored.selectionPadding : std::nullopt;
}

void MenuBarPreferenceStore::setValue(std::string_view key, std::optional<std::int64_t> value) {
    pending_.insert_or_assign(std::string(key), value);
}

bool MenuBarPreferenceStore::synchronize() {
    const auto changes = std::exchange(pending_, {});
    if (path_.empty())
        return false;
    if (changes.empty())
        return true;
    const FileLock lock(path_);
    if (!lock.isHeld())
        return false;
    const auto before = readSmallFileToReplace(path_);
    if (!before)
        return false;
    const auto after = edited(*before, changes);
    return after == *before || replaceFile(path_, after);
}

std::string MenuBarPreferenceStore::edited(std::string_view text, const Changes& changes) {
    const auto lines = linesOf(text);
    std::map<std::string_view, std::size_t> last; // the line that is kept for each key
    for (std::size_t i = 0; i < lines.size(); ++i)
        last.insert_or_assign(keyOf(lines[i]), i);
    std::string result;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const auto change = changes.find(keyOf(lines[i]));
        if (change == changes.end())
            result += std::string(lines[i]) + "\n";
        else if (change->second && last.at(change->first) == i)
            result += lineFor(change->first, *change->second, lines[i]) + "\n";
    }
    for (const auto& [key, value] : changes)
        if (value && !last.contains(key))
            result += lineFor(key, *value, {}) + "\n";
    return result;
}

} // namespace orrivane
