#include "ShellStage.h"

#include <QApplication>

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <stdexcept>

namespace {

// The stage is there before the toolkit starts and goes after it ended.
int run(int argc, char** argv) {
    std::unique_ptr<orrivane::ShellStage> stage;
    try {
        stage = std::make_unique<orrivane::ShellStage>();
    } catch (const std::runtime_error& problem) {
        std::printf("SKIPPED: these tests need an X server: %s\n", problem.what());
        return 77;
    }
    qputenv("DISPLAY", stage->display().c_str());
    qputenv("QT_QPA_PLATFORM", "xcb");
    qputenv("QT_SCALE_FACTOR", "1");
    qunsetenv("QT_QPA_PLATFORMTHEME");
    // With a bus, the toolkit would look for a tray there first.
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/dev/null");
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}

} // namespace

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    if (::testing::GTEST_FLAG(list_tests))
        return RUN_ALL_TESTS();
    return run(argc, argv);
}
