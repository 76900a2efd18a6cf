#pragma once

#include <Orrivane/view/Actions.h>
#include <Orrivane/view/Drawing.h>

#include <string>

namespace orrivane {

/// A drag that the user can begin here. Only plain text travels with it.
struct DragSource {
    std::string payload = {};
    ViewAction began = {};
    /// The toolkit's drag is over and the pointer is free again: dropped here, dropped elsewhere or
    /// cancelled. Runs once for every `began`, also if the tile is gone by then: a renderer keeps
    /// the newest action it had. After a drop it runs after the target's `performed`.
    ViewAction ended = {};

    friend bool operator==(const DragSource&, const DragSource&) = default;
};

/// A place where plain text can be dropped; what it proposes is a move.
struct DropTarget {
    ValueAction<double> updated = {}; ///< the pointer's distance from the tile's left edge, points
    ViewAction exited = {};
    AnsweringAction performed = {}; ///< false: the drop is refused

    friend bool operator==(const DropTarget&, const DropTarget&) = default;
};

/// A picture, exactly as large as its drawing, that can be dragged and dropped on.
///
/// The keyboard drags it too: each `stepped` takes it one place to the left (-1) or to the right
/// (1) and begins the drag if none is under way. When the keys are up again, `target.performed` of
/// the same tile drops it; without that the drag is cancelled. Either way `source.ended` follows.
struct Tile {
    Drawing content = {};
    DragSource source = {};
    DropTarget target = {};
    ValueAction<int> stepped = {};

    friend bool operator==(const Tile&, const Tile&) = default;
};

} // namespace orrivane
