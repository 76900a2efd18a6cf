#include "support/PrivateBus.h"
#include "support/Pump.h"

#include <linux/qt/SleepMonitor.h>
#include <tests/desktop/support/RequiredHere.h>

#include <QDBusMessage>

#include <gtest/gtest.h>

#include <vector>

namespace orrivane {

namespace {

class SleepMonitorTest : public ::testing::Test {
  protected:
    PrivateBus bus;
    std::vector<bool> told;

    void SetUp() override {
        if (bus.address().isEmpty())
            GTEST_SKIP() << e2e::reasonToSkip("dbus-daemon could not be started");
    }
    std::function<void(bool)> note() {
        return [this](bool goingToSleep) { told.push_back(goingToSleep); };
    }
    static bool beLoginManager(QDBusConnection& connection) {
        return connection.registerService("org.freedesktop.login1");
    }
    static bool announce(const QDBusConnection& connection, bool goingToSleep,
                         const char* signal = "PrepareForSleep") {
        auto message = QDBusMessage::createSignal("/org/freedesktop/login1",
                                                  "org.freedesktop.login1.Manager", signal);
        message << goingToSleep;
        return connection.send(message);
    }
};

} // namespace

TEST_F(SleepMonitorTest, tellsSleepAndWakingUp) {
    auto manager = bus.connect();
    ASSERT_TRUE(beLoginManager(manager));
    const SleepMonitor monitor(bus.connect(), note());
    ASSERT_TRUE(announce(manager, true));
    ASSERT_TRUE(announce(manager, false));
    ASSERT_TRUE(pumpUntil([&] { return told.size() >= 2; }));
    EXPECT_EQ(told, (std::vector{true, false}));
}

TEST_F(SleepMonitorTest, takesOtherSignalsForNothing) {
    auto manager = bus.connect();
    ASSERT_TRUE(beLoginManager(manager));
    const SleepMonitor monitor(bus.connect(), note());
    ASSERT_TRUE(announce(manager, true, "PrepareForShutdown"));
    ASSERT_TRUE(announce(manager, false));
    ASSERT_TRUE(pumpUntil([&] { return !told.empty(); }));
    EXPECT_EQ(told, std::vector{false});
}

TEST_F(SleepMonitorTest, believesTheLoginManagerAlone) {
    auto manager = bus.connect();
    ASSERT_TRUE(beLoginManager(manager));
    const SleepMonitor monitor(bus.connect(), note());
    ASSERT_TRUE(announce(bus.connect(), true));
    ASSERT_TRUE(announce(manager, false));
    ASSERT_TRUE(pumpUntil([&] { return !told.empty(); }));
    EXPECT_EQ(told, std::vector{false});
}

TEST_F(SleepMonitorTest, hearsALoginManagerThatStartsLater) {
    const SleepMonitor monitor(bus.connect(), note());
    auto manager = bus.connect();
    ASSERT_TRUE(beLoginManager(manager));
    // The change of owner and the signal come in this order; both are on their way.
    ASSERT_TRUE(announce(manager, true));
    ASSERT_TRUE(pumpUntil([&] { return !told.empty(); }));
    EXPECT_EQ(told, std::vector{true});
}

TEST_F(SleepMonitorTest, isSilentAfterItsEnd) {
    auto manager = bus.connect();
    ASSERT_TRUE(beLoginManager(manager));
    std::vector<bool> later;
    auto ended = std::make_unique<SleepMonitor>(bus.connect(), note());
    const SleepMonitor monitor(bus.connect(), [&](bool value) { later.push_back(value); });
    ended.reset();
    ASSERT_TRUE(announce(manager, true));
    ASSERT_TRUE(pumpUntil([&] { return !later.empty(); }));
    EXPECT_TRUE(told.empty());
}

TEST(SleepMonitorWithoutABus, isSilent) {
    int told = 0;
    const SleepMonitor monitor(QDBusConnection("no such connection"), [&](bool) { ++told; });
    pumpQueued();
    EXPECT_EQ(told, 0);
}

} // namespace orrivane
