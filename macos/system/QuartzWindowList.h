#pragma once

#include <Orrivane/platform/WindowList.h>

namespace orrivane {

/// The window server's lists. Needs no permission: only the names of other programs' windows are
/// withheld without one. Members that are no dictionaries are left out.
class QuartzWindowList : public WindowList {
  public:
    std::vector<WindowListEntry> allWindows() override;
    std::vector<WindowListEntry> onscreenWindows() override;
    std::vector<OwnedWindow> ownedWindows() override;
};

} // namespace orrivane
