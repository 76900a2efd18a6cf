#pragma once

#include <Orrivane/CaptureService.h>
#include <Orrivane/WindowCensus.h>
#include <Orrivane/platform/Platform.h>
#include <Orrivane/support/Observable.h>
#include <Orrivane/support/Task.h>
#include <Orrivane/view/View.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace orrivane {

/// How a status item is moved here.
struct ItemMover {
    /// Releases the item at `toX` (global points); true when the whole gesture was made.
    std::function<Task<bool>(StatusItemWindow item, double toX)> move;
    /// One sentence for the user where nothing can be moved; empty where it can, also without this.
    std::function<std::string()> limitation = {};
};

/// The row of tiles in which the user puts the menu bar in another order. Gap i lies just left of
/// tile i; the gap whose number is the count of tiles lies right of the last one. Owned through a
/// shared pointer, because a move once begun keeps its view alive. Main thread only.
class ArrangeView : public ObservableObject, public std::enable_shared_from_this<ArrangeView> {
  public:
    using Images = CaptureService::Images;
    using Names = std::map<std::uint32_t, std::string>;

    /// `captures` and the ports outlive the view and every move it began.
    ArrangeView(const Platform& platform, CaptureService& captures, ItemMover mover);

    [[nodiscard]] View body();
    /// Call whenever the view comes to be shown: reads the menu bar, unless a move will do so.
    void appear();

    /// Measures the menu bar again, pictures and names included, and ends any drag.
    Task<> reload();
    /// As `reload`; does nothing while a refresh or a move is running.
    Task<> refresh();
    /// Moves the item, lets the menu bar settle and reads it again, whatever came of the move.
    Task<> perform(StatusItemWindow item, double targetX);

    void beginDrag(std::uint32_t id);
    /// The pointer is free again. What was dropped begins to move now and not earlier: before, the
    /// toolkit would take the simulated drag for a part of the user's.
    void endDrag();
    void setInsertion(int gap) { insertionIndex_ = gap; }
    /// The same drag without a pointer: the gap goes one place to the left (-1) or right (1) of
    /// where item `id` would land now. Does nothing while another one is dragged, or a refresh or a
    /// move is running.
    void step(std::uint32_t id, int direction);
    /// Forgets the gap if it is one of the two beside tile `index`.
    void clearInsertion(int index);
    /// True if the drop would change the order; a move then follows the drag's end.
    bool performDrop();

    [[nodiscard]] const std::vector<StatusItemWindow>& items() const { return items_.get(); }
    [[nodiscard]] const Images& images() const { return images_.get(); }
    [[nodiscard]] const Names& names() const { return names_.get(); }
    [[nodiscard]] bool isWorking() const { return isWorking_; }
    [[nodiscard]] std::optional<std::uint32_t> draggingID() const { return draggingID_; }
    [[nodiscard]] std::optional<int> insertionIndex() const { return insertionIndex_; }

    /// The gap that a pointer over tile `index` means: the one before the tile in its left half,
    /// the one after it from the middle on. `x` is the pointer's distance from the tile's left edge
    /// and `tileWidth` the tile's width, both in points.
    static int gap(double x, double tileWidth, int index);

    /// The gap that takes tile `index` of `count` one place to the left (-1) or right (1) of where
    /// `gap` would put it, absent: of where it is. At the ends it stays.
    static int steppedGap(int index, std::optional<int> gap, int direction, int count);

    /// Where in the menu bar the item `draggingID` has to be released so that it lands in gap
    /// `insertionIndex`: one point left of the item then to its right, or one point right of the
    /// last item (any number beyond the last gap counts as the last). Global points, measured from
    /// the frames of `items`, which stand in menu-bar order. Absent, and the drop fails, when the
    /// item is not in `items`, when it already stands there, or for a negative gap.
    static std::optional<double> targetX(std::span<const StatusItemWindow> items,
                                         std::uint32_t draggingID, int insertionIndex);

    static constexpr double tileHeight = 30;    ///< points
    static constexpr double settlingTime = 0.7; ///< seconds

  private:
    struct Drop {
        StatusItemWindow item;
        double targetX = 0;
    };

    void begin(Task<> task);
    void clearDrag();
    [[nodiscard]] std::optional<Drop> decideDrop() const;
    [[nodiscard]] View header() const;
    [[nodiscard]] View strip();
    [[nodiscard]] View footer();
    [[nodiscard]] View tile(const StatusItemWindow& item, int index);
    [[nodiscard]] Drawing tileDrawing(const StatusItemWindow& item, int index) const;
    [[nodiscard]] std::string tooltip(const StatusItemWindow& item) const;

    Platform platform_;
    CaptureService& captures_;
    ItemMover mover_;

    Published<std::vector<StatusItemWindow>> items_{*this, {}};
    Published<Images> images_{*this, {}};
    Published<Names> names_{*this, {}};
    Published<bool> isWorking_{*this, false};
    Published<std::optional<std::uint32_t>> draggingID_{*this, std::nullopt};
    Published<std::optional<int>> insertionIndex_{*this, std::nullopt};
    Published<std::string> limitation_{*this, {}};

    std::optional<Drop> acceptedDrop_; // waits for the drag's end
};

/// What one tile makes of a drop over it. Whether it takes the text at all, and what happens as the
/// pointer comes in, is left to the toolkit.
struct TileDropDelegate {
    int index = 0;        ///< the tile's place in the row
    double tileWidth = 0; ///< points
    std::function<void(int)> setInsertion;
    std::function<void(int)> clearInsertion; ///< told `index`
    std::function<bool()> perform;

    /// `x`: the pointer's distance from the tile's left edge, points.
    void dropUpdated(double x) const { setInsertion(ArrangeView::gap(x, tileWidth, index)); }
    void dropExited() const { clearInsertion(index); }
    [[nodiscard]] bool performDrop() const { return perform(); }
};

} // namespace orrivane
