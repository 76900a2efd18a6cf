#pragma once

#include <Orrivane/support/Subscription.h>

#include <linux/x11/Connection.h>
#include <linux/x11/TreeWindow.h>

#include <cstdint>
#include <optional>
#include <set>
#include <unordered_map>
#include <vector>

namespace orrivane::x11 {

/// A mirror of the part of the window tree that can hold tray icons, kept from events. The first
/// `update` reads level by level, every request of a level before its first reply, so its round
/// trips go with the depth of the tree; later ones read only what events made unknown. A window is
/// listened to before it is read, so no change between the two is lost.
class WindowTree {
  public:
    explicit WindowTree(Connection& connection);
    WindowTree(const WindowTree&) = delete;
    WindowTree& operator=(const WindowTree&) = delete;

    /// Takes in all pending events and reads what is unknown. False when the server did not answer
    /// in time: there are no icons then until an update succeeds.
    bool update();
    /// Forgets everything; the next update reads anew.
    void invalidate();

    [[nodiscard]] const TreeWindow* find(std::uint32_t id) const;
    [[nodiscard]] const std::unordered_map<std::uint32_t, TreeWindow>& windows() const {
        return windows_;
    }
    /// The icons, tray order as the tree gives it: depth first, bottom to top.
    [[nodiscard]] std::vector<std::uint32_t> icons() const;
    /// Changes whenever something in the mirror may have changed.
    [[nodiscard]] std::uint64_t generation() const { return generation_; }

    /// The window's rectangle in root pixels.
    [[nodiscard]] PixelRect rootRect(const TreeWindow& window) const;
    /// Mapped, as are all its ancestors.
    [[nodiscard]] bool isViewable(const TreeWindow& window) const;
    /// The ancestor that is a child of the root, or the window itself.
    [[nodiscard]] const TreeWindow* topLevel(const TreeWindow& window) const;
    /// The outermost dock that the window lies in; null when there is none.
    [[nodiscard]] const TreeWindow* dockOf(const TreeWindow& window) const;
    /// Mapped children of the root above `topLevel`, bottom to top, that can hide something.
    [[nodiscard]] std::vector<const TreeWindow*> above(const TreeWindow& topLevel) const;

    [[nodiscard]] std::uint32_t trayOwner() const { return trayOwner_; }

    /// Round trips that updates have waited for so far, for the figures.
    [[nodiscard]] std::uint64_t roundTrips() const { return roundTrips_; }

  private:
    struct PendingRead;

    bool readRoots(Deadline until);
    [[nodiscard]] std::optional<bool> listenToTrayOwner(Deadline until);
    bool readDirty(Deadline until);
    [[nodiscard]] PendingRead send(std::uint32_t id, WindowRole role);
    bool receive(const PendingRead& pending, Deadline until, std::set<std::uint32_t>& next);
    void takeChildren(const PendingRead& read, const xcb_query_tree_reply_t* tree,
                      std::set<std::uint32_t>& next);
    [[nodiscard]] WindowType typeIn(const xcb_get_property_reply_t* reply) const;
    [[nodiscard]] WindowRole roleOf(const TreeWindow& window) const;
    [[nodiscard]] bool wantsChildren(const TreeWindow& window) const;
    void insertChild(std::uint32_t parent, std::uint32_t child);
    void detach(std::uint32_t id);
    void forget(std::uint32_t id);
    void markDirty(std::uint32_t id);

    void handle(const xcb_generic_event_t& event);
    void created(const xcb_create_notify_event_t& event, std::uint32_t sequence);
    void destroyed(std::uint32_t id, std::uint32_t sequence);
    void configured(const xcb_configure_notify_event_t& event, std::uint32_t sequence);
    void reparented(const xcb_reparent_notify_event_t& event, std::uint32_t sequence);
    void mapped(std::uint32_t id, bool isMapped);
    void circulated(const xcb_circulate_notify_event_t& event, std::uint32_t sequence);
    void propertyChanged(const xcb_property_notify_event_t& event);
    void shaped(const xcb_generic_event_t& event);
    void messaged(const xcb_client_message_event_t& event);
    void changed() { ++generation_; }

    Connection& connection_;
    std::unordered_map<std::uint32_t, TreeWindow> windows_;
    std::set<std::uint32_t> dirty_;
    bool rootsKnown_ = false;
    bool wasComplete_ = false; // everything has been read once since the roots are known
    std::uint32_t trayOwner_ = 0;
    std::uint32_t managerWindow_ = 0;
    std::uint8_t shapeEvent_ = 0;
    std::uint64_t generation_ = 1;
    std::uint64_t lastSerial_ = 0;
    std::uint64_t roundTrips_ = 0;
    Subscription events_;
};

} // namespace orrivane::x11
