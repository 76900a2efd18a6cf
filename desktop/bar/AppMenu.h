#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orrivane::desktop {

/// A menu that an application publishes for the bar to show.
struct AppMenu {
    static constexpr std::string_view separator = "-";

    std::string title;
    std::vector<std::string> entries; ///< separators among them: a choice counts these too

    friend bool operator==(const AppMenu&, const AppMenu&) = default;

    /// What the property `_ORRIVANE_APP_MENUS` says: one menu a line, its title and its entries
    /// set apart by tabs. Menus and entries keep their place in it as their number.
    static std::vector<AppMenu> parse(std::string_view text);
};

} // namespace orrivane::desktop
