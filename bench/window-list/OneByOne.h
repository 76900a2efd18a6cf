#pragma once

#include <cstddef>
#include <string>

#include <xcb/xcb.h>

namespace orrivane::bench {

/// The plain way to find the tray's icons: the same questions of each window that the program
/// asks, one window after the other.
class OneByOne {
  public:
    /// Throws std::runtime_error on failure.
    explicit OneByOne(const std::string& display);
    ~OneByOne();
    OneByOne(const OneByOne&) = delete;
    OneByOne& operator=(const OneByOne&) = delete;

    /// How many icons there are.
    std::size_t countIcons();
    /// How many waits for the server the last count took.
    [[nodiscard]] std::size_t roundTrips() const { return roundTrips_; }

  private:
    void visit(xcb_window_t window, xcb_window_t parent);

    xcb_connection_t* connection_;
    xcb_window_t root_;
    xcb_atom_t selection_;
    xcb_atom_t windowType_;
    xcb_atom_t embeddingInfo_;
    xcb_window_t trayOwner_ = 0;
    std::size_t icons_ = 0;
    std::size_t roundTrips_ = 0;
};

} // namespace orrivane::bench
