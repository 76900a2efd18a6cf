#pragma once

#include <Orrivane/platform/ShellPlatform.h>
#include <tests/support/ScriptedEventPoster.h>
#include <tests/support/ScriptedGlobalPreferences.h>
#include <tests/support/ScriptedLoginService.h>
#include <tests/support/ScriptedMainWindow.h>
#include <tests/support/ScriptedPlatform.h>
#include <tests/support/ScriptedPopover.h>
#include <tests/support/ScriptedProcessLauncher.h>
#include <tests/support/ScriptedStatusBar.h>
#include <tests/support/ScriptedUpdater.h>

namespace orrivane {

/// The scripted ports of the tools and the shell, on the journal and the loop of the others.
/// Outlives whatever uses its platform; `desktop` outlives it.
struct ScriptedShellPlatform {
    explicit ScriptedShellPlatform(ScriptedPlatform& desktop)
        : journal(desktop.journal)
        , eventPoster(journal, &desktop.loop) {}
    ScriptedShellPlatform(const ScriptedShellPlatform&) = delete;
    ScriptedShellPlatform& operator=(const ScriptedShellPlatform&) = delete;

    CallJournal journal;
    ScriptedEventPoster eventPoster;
    ScriptedGlobalPreferences globalPreferences{journal};
    ScriptedProcessLauncher processLauncher{journal};
    ScriptedLoginService loginService{journal};
    ScriptedUpdater updater{journal};
    ScriptedStatusBar statusBar{journal};
    ScriptedPopover popover{journal};
    ScriptedMainWindow mainWindow{journal};

    [[nodiscard]] ShellPlatform platform() {
        return {eventPoster, globalPreferences, processLauncher, loginService,
                updater,     statusBar,         popover,         mainWindow};
    }
};

} // namespace orrivane
