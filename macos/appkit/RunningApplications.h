#pragma once

#include <Orrivane/platform/Accessibility.h>

#include <optional>
#include <vector>

/// Who runs, as the workspace tells it.
namespace orrivane::running {

/// In the system's order. New ones appear only when the main run loop turns.
[[nodiscard]] std::vector<RunningApplication> applications();
[[nodiscard]] std::optional<RunningApplication> menuBarOwner();
[[nodiscard]] std::optional<RunningApplication> frontmost();

} // namespace orrivane::running
