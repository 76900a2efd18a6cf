#pragma once

#include <Orrivane/WindowCensus.h>

#include <linux/x11/WindowTree.h>
#include <linux/x11/X11Screens.h>

#include <cstdint>
#include <optional>
#include <set>
#include <vector>

namespace orrivane::x11 {

/// One tray icon as the server shows it now.
struct StatusItem {
    std::uint32_t window = 0;
    std::uint64_t serial = 0; ///< tells it from an earlier window of the same id
    PixelRect rect;           ///< root pixels, the icon itself
    Rect band;                ///< root pixels, the bar's band that the icon lies in
    bool isCovered = false;   ///< somebody else's window lies over its centre
};

/// The tray icons and the bar they lie in, derived from the mirror of the tree and kept until the
/// mirror or the screens change.
class StatusItems {
  public:
    StatusItems(Connection& connection, WindowTree& tree, X11Screens& screens);

    /// Brings the mirror up to date. Without an answer from the server there are no items.
    const std::vector<StatusItem>& current();
    [[nodiscard]] const std::vector<StatusItem>& lastKnown() const { return items_; }
    /// The item as of the last `current`; null when it is gone.
    [[nodiscard]] const StatusItem* find(std::uint32_t window) const;
    /// The same as window-list entries, WindowCensus::statusLayer, then the root's children, layer
    /// 0.
    const std::vector<WindowListEntry>& entries();

    /// The dock that holds the icons, else one in a cutout's band, else any; null without a dock.
    /// Valid until the mirror changes.
    const TreeWindow* dock();
    /// In root pixels.
    [[nodiscard]] PixelRect rectOf(const TreeWindow& window) const {
        return tree_.rootRect(window);
    }
    /// Root pixels from the root's left edge to where the dock's own windows end left of the
    /// notch; absent when nothing is there.
    std::optional<int> rightEdgeOfDockContent();

    /// Whether a window of another program lies above `topLevel` over all of `rect`.
    [[nodiscard]] bool isCoveredBy(const TreeWindow& topLevel, const PixelRect& rect) const;

    /// Windows of these clients are the program's own.
    void addOwnClient(std::uint32_t client) {
        ownClients_.insert(client);
        builtFrom_ = 0;
    }
    [[nodiscard]] bool isOwn(std::uint32_t window) const {
        return ownClients_.contains(connection_.clientOf(window));
    }

  private:
    void rebuild();
    void appendOrdinaryWindows(const Space& space);
    [[nodiscard]] bool isTrayPart(const TreeWindow& dock, const TreeWindow& window) const;
    [[nodiscard]] bool holdsTray(const TreeWindow& dock, const TreeWindow& window) const;
    [[nodiscard]] std::optional<int> contentEdge(const TreeWindow& dock, const TreeWindow& window,
                                                 double notch) const;
    [[nodiscard]] const TreeWindow* findDock();

    Connection& connection_;
    WindowTree& tree_;
    X11Screens& screens_;
    std::set<std::uint32_t> ownClients_;
    std::vector<StatusItem> items_;
    std::vector<WindowListEntry> entries_;
    std::uint64_t builtFrom_ = 0;
    Subscription screenChanges_;
};

} // namespace orrivane::x11
