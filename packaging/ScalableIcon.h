#pragma once

#include <Orrivane/view/Drawing.h>

#include <optional>
#include <string>
#include <string_view>

namespace orrivane {

/// An SVG document of a square canvas with `figure` in its middle, all of it in `color` (as CSS
/// writes it). Absent when the figure has anything but ovals and paths.
std::optional<std::string> scalableIcon(const Drawing& figure, std::string_view color);

} // namespace orrivane
