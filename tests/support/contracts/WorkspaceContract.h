#pragma once

#include <Orrivane/platform/Workspace.h>
#include <tests/support/contracts/Contract.h>

#include <array>
#include <string>
#include <vector>

namespace orrivane {

/// The world also offers: `Workspace& workspace()`, `bool cause(SystemNotification)` (the system
/// does what the notification tells of), `bool open(address)` through a system in which exactly
/// "https:" addresses have a program, and `bool terminated()` (the program was asked to end, which
/// the world does not let happen).
template <typename World>
class WorkspaceContract : public Contract<World> {
  protected:
    Workspace& workspace() { return this->world.workspace(); }

    static constexpr std::array notifications = {
        SystemNotification::didActivateApplication, SystemNotification::willSleep,
        SystemNotification::screensDidSleep,        SystemNotification::didWake,
        SystemNotification::screensDidWake,         SystemNotification::didChangeScreenParameters,
    };
};

TYPED_TEST_SUITE_P(WorkspaceContract);

TYPED_TEST_P(WorkspaceContract, registeringTellsNothing) {
    int told = 0;
    std::vector<Subscription> observers;
    for (const auto notification : this->notifications)
        observers.push_back(this->workspace().observe(notification, [&] { ++told; }));
    EXPECT_EQ(told, 0);
}

TYPED_TEST_P(WorkspaceContract, everyNotificationReachesItsObservers) {
    bool causedAny = false;
    for (const auto notification : this->notifications) {
        int first = 0;
        int second = 0;
        const auto one = this->workspace().observe(notification, [&] { ++first; });
        const auto other = this->workspace().observe(notification, [&] { ++second; });
        if (!this->world.cause(notification))
            continue;
        causedAny = true;
        EXPECT_TRUE(this->world.pumpUntil([&] { return first > 0 && second > 0; }))
            << "notification " << static_cast<int>(notification);
    }
    if (!causedAny)
        GTEST_SKIP() << "no notification can be caused here";
}

TYPED_TEST_P(WorkspaceContract, aChangeOfScreensIsNotTakenForSleep) {
    int sleeps = 0;
    int changes = 0;
    const auto sleep = this->workspace().observe(SystemNotification::willSleep, [&] { ++sleeps; });
    const auto change = this->workspace().observe(SystemNotification::didChangeScreenParameters,
                                                  [&] { ++changes; });
    if (!this->world.cause(SystemNotification::didChangeScreenParameters))
        GTEST_SKIP() << "the screens cannot be changed here";
    ASSERT_TRUE(this->world.pumpUntil([&] { return changes > 0; }));
    EXPECT_EQ(sleeps, 0);
}

TYPED_TEST_P(WorkspaceContract, anObserverWhoseHandleDiedIsToldNothing) {
    const auto notification = SystemNotification::didActivateApplication;
    int told = 0;
    int others = 0;
    auto observer = this->workspace().observe(notification, [&] { ++told; });
    const auto other = this->workspace().observe(notification, [&] { ++others; });
    observer.reset();
    if (!this->world.cause(notification))
        GTEST_SKIP() << "no application can be activated here";
    ASSERT_TRUE(this->world.pumpUntil([&] { return others > 0; }));
    EXPECT_EQ(told, 0);
}

TYPED_TEST_P(WorkspaceContract, anAddressIsOpenedAndWhatIsNoneIsRefused) {
    EXPECT_TRUE(this->world.open("https://localhost/contract"));
    EXPECT_FALSE(this->world.open(""));
    EXPECT_FALSE(this->world.open("no address"));
}

TYPED_TEST_P(WorkspaceContract, theProgramEndsOnRequestOnly) {
    EXPECT_FALSE(this->world.terminated());
    this->workspace().terminate();
    EXPECT_TRUE(this->world.pumpUntil([&] { return this->world.terminated(); }));
}

TYPED_TEST_P(WorkspaceContract, theProgramHasAVersion) {
    const auto versions = this->workspace().versionStrings();
    EXPECT_NE(versions.version.find('.'), std::string::npos);
    EXPECT_FALSE(versions.build.empty());
}

REGISTER_TYPED_TEST_SUITE_P(WorkspaceContract, registeringTellsNothing,
                            everyNotificationReachesItsObservers,
                            aChangeOfScreensIsNotTakenForSleep,
                            anObserverWhoseHandleDiedIsToldNothing,
                            anAddressIsOpenedAndWhatIsNoneIsRefused, theProgramEndsOnRequestOnly,
                            theProgramHasAVersion);

} // namespace orrivane
