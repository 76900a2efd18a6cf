#include <desktop/bar/AppMenu.h>

#include <algorithm>

namespace orrivane::desktop {

namespace {

std::vector<std::string> split(std::string_view text, char mark) {
    std::vector<std::string> parts;
    for (;;) {
        const auto end = text.find(mark);
        parts.emplace_back(text.substr(0, end));
        if (end == std::string_view::npos)
            return parts;
        text.remove_prefix(end + 1);
    }
}

} // namespace

std::vector<AppMenu> AppMenu::parse(std::string_view text) {
    if (text.ends_with('\n'))
        text.remove_suffix(1);
    std::vector<AppMenu> menus;
    if (text.empty())
        return menus;
    for (const auto& line : split(text, '\n')) {
        auto fields = split(line, '\t');
        AppMenu menu{std::move(fields.front()), {}};
        menu.entries.assign(std::next(fields.begin()), fields.end());
        menus.push_back(std::move(menu));
    }
    return menus;
}

} // namespace orrivane::desktop
