#pragma once

#include "Observer.h"

#include <string>

namespace orrivane::e2e {

/// Writes what the root window shows to `path` as PNG.
void saveScreenshot(Observer& observer, const std::string& path);

/// The same for a part of the screen.
void saveScreenshot(Observer& observer, const std::string& path, const PixelRect& area);

} // namespace orrivane::e2e
