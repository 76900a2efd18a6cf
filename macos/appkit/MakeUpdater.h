#pragma once

#include <Orrivane/platform/Updater.h>

#include <functional>
#include <memory>

namespace orrivane {

/// The updater that this build was made with; never null. It calls `willShowWindow` before it shows
/// a window of its own, which the popover would cover.
[[nodiscard]] std::unique_ptr<Updater> makeUpdater(std::function<void()> willShowWindow);

} // namespace orrivane
