#pragma once

#include <Orrivane/platform/Screens.h>

namespace orrivane {

class AppKitScreens : public Screens {
  public:
    [[nodiscard]] std::vector<ScreenDescription> screens() override;
    [[nodiscard]] std::optional<ScreenDescription> mainScreen() override;
    [[nodiscard]] Rect visibleFrame(const ScreenDescription& screen) override;
    [[nodiscard]] bool mainDisplayIsAsleep() override;
};

} // namespace orrivane
