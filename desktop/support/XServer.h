#pragma once

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include <QPoint>

#include <xcb/xcb.h>

namespace orrivane::desktop {

struct FreeDeleter {
    void operator()(void* memory) const { std::free(memory); }
};

/// A reply or an error that libxcb allocated.
template <typename T>
using Owned = std::unique_ptr<T, FreeDeleter>;

/// The toolkit's connection to the X server; every reply is checked, none is fatal.
namespace xserver {

xcb_connection_t* connection();
xcb_window_t root();
xcb_atom_t atom(std::string_view name);
/// Absent when the window or the property is gone, or holds something else.
std::optional<std::vector<std::uint32_t>> cardinals(xcb_window_t window, std::string_view property);
/// Replaces a property of bytes.
void setText(xcb_window_t window, std::string_view property, xcb_atom_t type,
             std::string_view bytes);
/// Pixels of the root window; absent when the window is gone.
std::optional<QPoint> rootPosition(xcb_window_t window, QPoint inside = {});
/// Adds to the events this connection asked for; false when the window is gone.
bool listen(xcb_window_t window, std::uint32_t events);

} // namespace xserver

} // namespace orrivane::desktop
