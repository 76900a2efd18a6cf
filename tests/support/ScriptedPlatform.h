#pragma once

#include <Orrivane/platform/Platform.h>
#include <tests/support/ScriptedAccessibility.h>
#include <tests/support/ScriptedLog.h>
#include <tests/support/ScriptedOwnWindows.h>
#include <tests/support/ScriptedScreenCapture.h>
#include <tests/support/ScriptedScreens.h>
#include <tests/support/ScriptedTrayPanel.h>
#include <tests/support/ScriptedUserDefaults.h>
#include <tests/support/ScriptedWindowList.h>
#include <tests/support/ScriptedWorkspace.h>
#include <tests/support/VirtualLoop.h>

namespace orrivane {

/// One scripted body of each port that a `Platform` needs, on one journal and one virtual loop.
/// Outlives whatever uses its platform.
struct ScriptedPlatform {
    ScriptedPlatform() { accessibility.clock = &loop; }
    ScriptedPlatform(const ScriptedPlatform&) = delete;
    ScriptedPlatform& operator=(const ScriptedPlatform&) = delete;

    CallJournal journal;
    VirtualLoop loop; // before the ports: it outlives all of them
    ScriptedScreens screens{journal};
    ScriptedWindowList windowList{journal};
    ScriptedOwnWindows ownWindows{journal};
    ScriptedAccessibility accessibility{journal};
    ScriptedScreenCapture screenCapture{loop, journal};
    ScriptedUserDefaults userDefaults{journal};
    ScriptedWorkspace workspace{journal};
    ScriptedTrayPanel trayPanel{journal};
    ScriptedLog log{journal};

    [[nodiscard]] Platform platform() {
        return {loop,          screens,      windowList, ownWindows, accessibility,
                screenCapture, userDefaults, workspace,  trayPanel,  log};
    }
};

} // namespace orrivane
