#include "PrivateBus.h"
#include "PrivateXServer.h"

#include <QApplication>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>

namespace {

// Offers org.a11y.Bus, so that the toolkit builds its bridge to assistive programs.
bool startAccessibility(QProcess& launcher, const QString& session, const QString& accessibility) {
    launcher.start(ORRIVANE_MOCK_TREE, {session, accessibility, QProcess::nullDevice()});
    return launcher.waitForReadyRead(10'000);
}

// The servers are there before the toolkit starts and go after it ended.
int run(int argc, char** argv) {
    const orrivane::PrivateXServer server;
    const orrivane::PrivateBus session;
    const orrivane::PrivateBus accessibility;
    QProcess launcher;
    if (server.display().isEmpty() || session.address().isEmpty() ||
        accessibility.address().isEmpty() ||
        !startAccessibility(launcher, session.address(), accessibility.address())) {
        std::puts("SKIPPED: these tests need Xvfb and dbus-daemon");
        return 77;
    }
    qputenv("DISPLAY", server.display().toUtf8());
    qputenv("DBUS_SESSION_BUS_ADDRESS", session.address().toUtf8());
    qputenv("ORRIVANE_TEST_ACCESSIBILITY_BUS", accessibility.address().toUtf8());
    qputenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
    qputenv("QT_QPA_PLATFORM", "xcb");
    qunsetenv("QT_QPA_PLATFORMTHEME");
    int status = 1;
    {
        const QApplication application(argc, argv);
        QApplication::setQuitOnLastWindowClosed(false);
        status = RUN_ALL_TESTS();
    }
    launcher.kill();
    launcher.waitForFinished(10'000);
    return status;
}

} // namespace

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    if (::testing::GTEST_FLAG(list_tests))
        return RUN_ALL_TESTS();
    return run(argc, argv);
}
