#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace orrivane {

class GlobalPreferences;
class ProcessLauncher;

/// What is stored of the menu bar's spacing, in the system's preference units.
struct SqueezeState {
    std::optional<std::int64_t> spacing; ///< absent: no number is stored
    std::optional<std::int64_t> padding; ///< absent: no number is stored

    friend bool operator==(const SqueezeState&, const SqueezeState&) = default;
};

/// Tightens the system's own spacing between status items. Stateless; main thread only. The menu
/// bar shows a new spacing once its process was restarted.
struct SqueezeEngine {
    // On the installed platform.
    static SqueezeState read();
    static bool apply(std::int64_t spacing);
    static bool reset();
    static void restartControlCenter();

    static SqueezeState read(GlobalPreferences& preferences);
    /// Stores the spacing as given, and the padding that goes with it; read back at once. False
    /// when it could not be written, which callers may ignore.
    static bool apply(std::int64_t spacing, GlobalPreferences& preferences);
    /// Removes both numbers; the result as above.
    static bool reset(GlobalPreferences& preferences);
    /// Ends the menu bar's process, which the system starts again. Returns at once; a failure stays
    /// unnoticed.
    static void restartControlCenter(ProcessLauncher& launcher);

    /// The selection padding that goes with a spacing, both in the system's preference units: two
    /// less than the spacing, but at least 2. The spacing may be any number; one so low that the
    /// subtraction would overflow is a programming error and ends the program.
    static std::int64_t padding(std::int64_t spacing);

    /// What the system is taken to use while nothing is stored.
    static constexpr std::int64_t systemSpacing = 16;

    /// What `restartControlCenter` launches, with the name of the bar's process as its argument.
    static constexpr std::string_view restartProgram = "/usr/bin/killall";
    static constexpr std::string_view menuBarProcess = "ControlCenter";

  private:
    static constexpr std::string_view spacingKey = "NSStatusItemSpacing";
    static constexpr std::string_view paddingKey = "NSStatusItemSelectionPadding";
};

} // namespace orrivane
