#pragma once

#include <Orrivane/platform/Updater.h>

#include <functional>
#include <memory>

namespace orrivane {

/// The updater that this build was made with; never null. It calls `willShowWindow` before it shows
/// an update or the outcome of a check, which the popover would cover.
[[nodiscard]] std::unique_ptr<Updater> makeUpdater(std::function<void()> willShowWindow);

} // namespace orrivane
