#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orrivane {

/// The menu bar's spacing as the user has set it: docs/menu-bar-preferences.md says how it is
/// stored. Numbers are points and are handed on as they stand in the file, negative and huge ones
/// too: what makes sense is for the reader of a number to say.
struct MenuBarPreferences {
    static constexpr std::string_view spacingKey = "NSStatusItemSpacing";
    static constexpr std::string_view selectionPaddingKey = "NSStatusItemSelectionPadding";

    std::optional<std::int64_t> spacing;
    std::optional<std::int64_t> selectionPadding;

    /// What `text` says. Lines that say nothing valid are passed over; never fails.
    static MenuBarPreferences parse(std::string_view text);
    /// The same for a file; nothing is set where it cannot be read, is no regular file or is larger
    /// than a megabyte. Never waits for another process.
    static MenuBarPreferences read(const std::string& path);
    /// The user's file, absolute; empty where there is no home.
    static std::string userFile();

    friend bool operator==(const MenuBarPreferences&, const MenuBarPreferences&) = default;
};

} // namespace orrivane
