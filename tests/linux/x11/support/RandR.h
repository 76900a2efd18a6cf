#pragma once

#include "XClient.h"

#include <string>

namespace orrivane::x11 {

/// A monitor that a user defines by hand; the server takes it for a real one. One that takes the
/// server's only output replaces the monitor that the server itself made of it.
void setMonitor(XClient& client, const std::string& name, const PixelRect& rect, bool primary,
                bool takesOutput = false);
void deleteMonitor(XClient& client, const std::string& name);
/// Blanks the screens, or shows them again, as the server's own saver does.
void setBlank(XClient& client, bool blank);

} // namespace orrivane::x11
