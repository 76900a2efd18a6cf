#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <xcb/xcb.h>

namespace orrivane::bench {

/// A tray of any size: a dock with one socket for each icon, owned by one X client that also owns
/// the tray's selection, and the icons of a second client. Gone with this object.
class FakeTray {
  public:
    /// Returns when the server has made everything. Throws std::runtime_error on failure.
    FakeTray(const std::string& display, std::size_t iconCount);
    ~FakeTray();
    FakeTray(const FakeTray&) = delete;
    FakeTray& operator=(const FakeTray&) = delete;

    /// The class of every icon's WM_CLASS.
    static constexpr const char* iconClass = "FakeIcon";

  private:
    void makeDock();
    void makeIcon(std::size_t index);

    xcb_connection_t* panel_;
    xcb_connection_t* application_;
    xcb_atom_t embeddingInfo_;
    xcb_window_t dock_ = 0;
};

} // namespace orrivane::bench
