#include <linux/support/MenuBarPreferences.h>

#include <linux/support/SmallFile.h>
#include <linux/support/Text.h>
#include <linux/support/UserFolders.h>

namespace orrivane {

namespace {

void take(MenuBarPreferences& preferences, std::string_view line) {
    line = line.substr(0, line.find('#'));
    const auto sign = line.find('=');
    if (sign == std::string_view::npos)
        return;
    const auto key = trimmed(line.substr(0, sign));
    const auto value = numberIn<std::int64_t>(trimmed(line.substr(sign + 1)));
    if (!value)
        return;
    if (key == MenuBarPreferences::spacingKey)
        preferences.spacing = value;
    else if (key == MenuBarPreferences::selectionPaddingKey)
        preferences.selectionPadding = value;
}

} // namespace

MenuBarPreferences MenuBarPreferences::parse(std::string_view text) {
    MenuBarPreferences preferences;
    while (!text.empty())
        take(preferences, takeLine(text));
    return preferences;
}

MenuBarPreferences MenuBarPreferences::read(const std::string& path) {
    const auto text = readSmallFile(path);
    return text ? parse(*text) : MenuBarPreferences{};
}

std::string MenuBarPreferences::userFile() {
    return UserFolders::file(UserFolders::ofThisUser().configuration, "orrivane/menu-bar.conf");
}

} // namespace orrivane
