#pragma once

#include <desktop/support/XServer.h>

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace orrivane::desktop::ewmh {

/// What the window manager tells and can be asked for, over the toolkit's connection.

/// 0 when no window is active, or no window manager says so.
xcb_window_t activeWindow();
/// The windows that it manages.
std::vector<xcb_window_t> managedWindows();
/// As a press of the window's close button would.
void close(xcb_window_t window);
/// Puts all windows out of sight, or back.
void showDesktop(bool shown);
[[nodiscard]] bool isShowingDesktop();

/// A property of bytes; empty when the window or the property is gone.
std::string text(xcb_window_t window, std::string_view property);
/// Sends a client message of five numbers to `receiver`.
void tell(xcb_window_t receiver, xcb_window_t about, std::string_view type,
          const std::array<std::uint32_t, 5>& data, std::uint32_t eventMask);

} // namespace orrivane::desktop::ewmh
