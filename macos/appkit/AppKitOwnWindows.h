#pragma once

#include <Orrivane/platform/OwnWindows.h>

namespace orrivane {

/// The windows of the application object. One that was never shown has a number below 1.
class AppKitOwnWindows : public OwnWindows {
  public:
    [[nodiscard]] std::vector<std::int64_t> windowNumbers() override;
    [[nodiscard]] bool mainViewWindowIsVisible() override;
};

} // namespace orrivane
