#pragma once

#include <Orrivane/platform/Updater.h>

#include <memory>

namespace orrivane {

/// The updater that this build was made with; never null.
[[nodiscard]] std::unique_ptr<Updater> makeUpdater();

} // namespace orrivane
