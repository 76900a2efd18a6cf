#pragma once

#include <Orrivane/WindowCensus.h>
#include <Orrivane/view/Roles.h>

#include <optional>
#include <string>
#include <vector>

namespace orrivane {

/// A line of text beside a symbol, both in one colour.
struct DiagnosticRow {
    std::string text; ///< UTF-8
    SymbolName symbol;
    ColorRole color = ColorRole::secondary;

    friend bool operator==(const DiagnosticRow&, const DiagnosticRow&) = default;
};

/// What the notch hides and how much of it the strip shows, in one or two rows.
struct DiagnosticLine {
    std::vector<DiagnosticRow> rows;

    friend bool operator==(const DiagnosticLine&, const DiagnosticLine&) = default;
};

/// The settings and diagnostics screen.
struct MainView {
    /// `mirroredCount` is what the strip reports; it may come from a newer look at the menu bar
    /// than `census`, so more than the eaten items counts as all of them.
    static DiagnosticLine diagnosticLine(const std::optional<CensusResult>& census,
                                         int mirroredCount);

    /// What a spacing would do, from the number of icons the notch would then hide. UTF-8.
    static std::string projectedVerdict(int projectedEatenCount);
};

} // namespace orrivane
