#pragma once

#include <Orrivane/view/Actions.h>

#include <string>
#include <vector>

namespace orrivane {

struct View;

/// Where children lie across the direction in which they follow each other; in an overlay, where
/// they lie over the first one.
enum class Alignment { center, leading, trailing, top, bottom };

/// A row, left to right.
struct HorizontalStack {
    double spacing = 0; ///< points between neighbours
    Alignment alignment = Alignment::center;
    std::vector<View> children = {};

    friend bool operator==(const HorizontalStack&, const HorizontalStack&);
};

/// A column, top to bottom.
struct VerticalStack {
    double spacing = 0; ///< points between neighbours
    Alignment alignment = Alignment::leading;
    std::vector<View> children = {};

    friend bool operator==(const VerticalStack&, const VerticalStack&);
};

/// Children on top of each other, back to front. The first one gives the size.
struct Overlay {
    Alignment alignment = Alignment::center;
    std::vector<View> children = {};

    friend bool operator==(const Overlay&, const Overlay&);
};

/// A titled frame as wide as the place allows, around a column aligned at its leading edge.
struct GroupBox {
    std::string title = {};
    double spacing = 0; ///< points between neighbours
    std::vector<View> children = {};

    friend bool operator==(const GroupBox&, const GroupBox&);
};

/// A column under a heading that opens and closes it. As with a switch, the user's change is only
/// reported.
struct Disclosure {
    std::string label = {};
    bool isExpanded = false;
    ValueAction<bool> changed = {};
    std::vector<View> children = {}; ///< there also while closed

    friend bool operator==(const Disclosure&, const Disclosure&);
};

/// A column that scrolls where the place is smaller than it. As the root of a screen it is what
/// the window is fitted to.
struct VerticalScroll {
    double spacing = 0; ///< points between neighbours
    std::vector<View> children = {};
    /// The column's natural height at its present width, points: once when first laid out, then
    /// whenever it changes.
    ValueAction<double> contentHeightChanged = {};

    friend bool operator==(const VerticalScroll&, const VerticalScroll&);
};

/// A row that scrolls where the place is narrower than it.
struct HorizontalScroll {
    double spacing = 0; ///< points between neighbours
    std::vector<View> children = {};

    friend bool operator==(const HorizontalScroll&, const HorizontalScroll&);
};

/// Takes what room its siblings in the stack leave.
struct Spacer {
    double minimumLength = 0; ///< points

    friend bool operator==(const Spacer&, const Spacer&) = default;
};

} // namespace orrivane
