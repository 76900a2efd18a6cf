#pragma once

#include <Orrivane/CaptureService.h>
#include <Orrivane/Diagnosis.h>
#include <Orrivane/StripController.h>

#include <tests/support/ScriptedShellPlatform.h>

#include <gtest/gtest.h>

#include <string>

namespace orrivane {

/// Two hidden items and a visible one, the tray switched on.
struct DiagnosisFixture : testing::Test {
    ScriptedPlatform world;
    ScriptedShellPlatform shell{world};
    CaptureService captureService{world.screenCapture, world.accessibility, world.workspace};
    StripController registersTheDefaults{world.platform(), captureService};

    DiagnosisFixture() {
        world.screens.list = {ScriptedScreens::notched()};
        world.userDefaults.setBool(StripController::enabledKey, true);
        add(11, 700);
        add(12, 740);
        add(13, 1400);
        world.accessibility.addApplication(50, "Editor");
        world.accessibility.menuBarOwner = world.accessibility.running.back();
        setMenuWidth(300);
    }
    void setMenuWidth(double width) {
        world.accessibility.setMenuBar(50, Rect{{0, 0}, {1512, 37}}, {Rect{{0, 0}, {width, 37}}});
    }
    void add(std::uint32_t id, double x) { world.windowList.add(id, {{x, 0}, {30, 37}}); }
    Diagnosis take() { return Diagnosis::take(world.platform(), shell.globalPreferences); }
};

} // namespace orrivane
