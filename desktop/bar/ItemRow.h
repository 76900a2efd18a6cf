#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrivane::desktop {

/// What an item is known by when it comes back: its application and which of the application's
/// items it is, counted from 0.
struct ItemKey {
    std::string application;
    int ordinal = 0;

    friend bool operator==(const ItemKey&, const ItemKey&) = default;
};

/// Where an item stands: pixels from the left of the tray, negative beyond its left end.
struct PlacedItem {
    std::uint32_t id = 0;
    int x = 0;
    int width = 0;

    friend bool operator==(const PlacedItem&, const PlacedItem&) = default;
};

/// The order of the status items and where it puts them: edge to edge from the right end to the
/// left, without end. Remembers the places of items that are not there, for when they come back.
class ItemRow {
  public:
    /// Limits of the X server: a window's position and extent.
    static constexpr int leftmost = -32768;
    static constexpr int widest = 32767;
    /// As many places are remembered; those of absent items are given up first.
    static constexpr std::size_t mostRemembered = 512;

    /// `spacing`: pixels added to every item's natural width.
    explicit ItemRow(std::int64_t spacing)
        : spacing_(spacing) {}

    /// Where the rightmost item ends; pixels from the left of the tray.
    void setRightEnd(int x) { rightEnd_ = x; }

    /// The order kept from before, left to right; called before items are added.
    void remember(const std::vector<ItemKey>& order);
    /// Every known place, left to right.
    [[nodiscard]] std::vector<ItemKey> order() const;

    /// Puts an item where one of its key stood, else at the left end. `naturalWidth` in pixels.
    void add(std::uint32_t id, std::string_view application, int naturalWidth);
    /// Its place stays remembered. Ends a drag of it.
    void remove(std::uint32_t id);
    void setNaturalWidth(std::uint32_t id, int naturalWidth);
    /// An item that is not shown takes no room. Hiding it ends a drag of it.
    void setShown(std::uint32_t id, bool shown);
    [[nodiscard]] bool contains(std::uint32_t id) const;

    /// The shown items, left to right in their order; a dragged one where it is held.
    [[nodiscard]] std::vector<PlacedItem> placed() const;

    /// Takes hold of a shown item with the pointer at `x`; false if there is no such item.
    bool beginDrag(std::uint32_t id, int x);
    /// Moves the held item along with the pointer. Those whose middle its own middle passes make
    /// room.
    void dragTo(int x);
    /// Lets go: the item takes the room that the others made.
    void drop() { drag_.reset(); }
    /// Lets go and puts every item back where it stood.
    void cancelDrag();
    /// The held item; 0 when none is.
    [[nodiscard]] std::uint32_t dragged() const { return drag_ ? drag_->id : 0; }

  private:
    struct Place {
        ItemKey key;
        std::uint32_t id = 0; // 0: the item is not there
        int naturalWidth = 0;
        bool shown = false;
    };
    struct Drag {
        std::uint32_t id = 0;
        int grip = 0; // from the item's left edge to the pointer
        int x = 0;    // of the item's left edge
        std::vector<ItemKey> before;
    };

    [[nodiscard]] Place* find(std::uint32_t id);
    [[nodiscard]] int widthOf(const Place& place) const;
    [[nodiscard]] int freeOrdinal(std::string_view application) const;
    [[nodiscard]] std::vector<PlacedItem> packed() const;
    void moveBeside(std::uint32_t id, std::uint32_t neighbour, bool toItsLeft);
    void forgetSurplus();

    std::int64_t spacing_;
    int rightEnd_ = 0;
    std::vector<Place> places_; // left to right
    std::optional<Drag> drag_;
};

} // namespace orrivane::desktop
