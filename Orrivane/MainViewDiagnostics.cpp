#include <Orrivane/MainView.h>

#include <algorithm>
#include <utility>

namespace orrivane {

namespace {

std::string countedIcons(int count) {
    return std::to_string(count) + (count == 1 ? " icon" : " icons");
}

DiagnosticRow good(std::string text) {
    return {std::move(text), "checkmark.circle", ColorRole::green};
}

DiagnosticRow bad(std::string text) {
    return {std::move(text), "exclamationmark.triangle", ColorRole::red};
}

DiagnosticLine hidingLine(int eaten, int mirrored) {
    const std::string hiding = "The notch is hiding " + countedIcons(eaten);
    if (mirrored < 1)
        return {{bad(hiding)}};
    if (mirrored >= eaten)
        return {{good(hiding + " — Orrivane is showing all of them")}};
    const int missing = eaten - mirrored;
    return {{good(hiding + " — Orrivane is showing " + std::to_string(mirrored)),
             bad(countedIcons(missing) + (missing == 1 ? " is" : " are") + " not shown anywhere")}};
}

} // namespace

DiagnosticLine MainView::diagnosticLine(const std::optional<CensusResult>& census,
                                        int mirroredCount) {
    if (!census)
        return {{{"Scanning the menu bar…", "ellipsis.circle", ColorRole::secondary}}};
    if (!census->notch)
        return {{good("No notch detected")}};
    const auto eaten =
        static_cast<int>(std::ranges::count(census->items, true, &StatusItemWindow::isEaten));
    if (eaten == 0)
        return {{good("All menu bar icons are visible")}};
    return hidingLine(eaten, mirroredCount);
}

std::string MainView::projectedVerdict(int projectedEatenCount) {
    if (projectedEatenCount == 0)
        return "→ all icons would fit";
    return "→ would hide " + countedIcons(projectedEatenCount);
}

} // namespace orrivane
