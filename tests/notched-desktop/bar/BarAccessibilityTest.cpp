#include "BarStage.h"
#include "Desktop.h"
#include "WaitFor.h"

#include <linux/qt/GlobalMenuExtents.h>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>

#include <gtest/gtest.h>

namespace orrivane::e2e {
namespace {

TEST(BarAccessibilityTest, assistiveProgramsFindTheMenusWhereTheyShow) {
    if (const auto missing = missingPrograms({"dbus-daemon", "openbox"}); !missing.empty())
        GTEST_SKIP() << missing;
    BarStage::Options options;
    options.windowManager = true;
    options.accessible = true;
    BarStage stage(options);
    const auto busName = QStringLiteral("bar test");
    const auto bus =
        QDBusConnection::connectToBus(QString::fromStdString(stage.busAddress()), busName);
    ASSERT_TRUE(bus.isConnected());
    // A bar waits for the service; starting it is the session's part.
    bus.interface()->startService(QStringLiteral("org.a11y.Bus"));
    double now = 0;
    GlobalMenuExtents extents(bus, [&] { return now += 60; });
    const auto told = [&] {
        return waitFor("the last menu ends where its title does", [&] {
            QCoreApplication::processEvents();
            return extents.rightEdge(stage.bar().pid(), {0, 0, 1512, 37}) ==
                   std::optional(stage.titles().area.right());
        });
    };
    EXPECT_TRUE(told());
    const int before = stage.titles().area.right();
    auto& window = stage.windows().emplace_back(
        stage.display(), ClientWindow::Options{"Elaborate", 300, 200, false, false});
    window.publishMenus("File\tOpen\nArrangement\tLeft\nTransformation\tTurn\nHelp\tAbout");
    window.map();
    EXPECT_TRUE(waitFor("the titles take more room",
                        [&] { return stage.titles().area.right() > before + 60; }));
    EXPECT_TRUE(told());
    QDBusConnection::disconnectFromBus(busName);
}

} // namespace
} // namespace orrivane::e2e

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
