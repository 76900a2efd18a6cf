#pragma once

#include "Observer.h"

#include <optional>
#include <string>

namespace orrivane::demo {

/// Saves the screen as PNG, with what no server can tell drawn into it: the notch over `cutout`
/// (a housing shows no pixels, a server does not know that) and the pointer. `part` is what of it
/// is saved, everything when absent. Root pixels. Throws std::runtime_error when the file cannot
/// be written.
void savePicture(e2e::Observer& observer, const e2e::PixelRect& cutout, const std::string& path,
                 const std::optional<e2e::PixelRect>& part = {});

} // namespace orrivane::demo
