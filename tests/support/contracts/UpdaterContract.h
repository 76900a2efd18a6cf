#pragma once

#include <Orrivane/platform/Updater.h>
#include <tests/support/contracts/Contract.h>

#include <string>
#include <vector>

namespace orrivane {

/// The world also offers: `Updater& updater()` (with feed and key, not created), `bool
/// changeCanCheck()` (whether a check is possible becomes the opposite) and `bool
/// findScheduledUpdate(version)` (a scheduled check finds an update and the user sees to it).
template <typename World>
class UpdaterContract : public Contract<World> {
  protected:
    /// Leaves the showing of updates to the program and notes what it is told.
    struct Delegate : UpdaterDelegate {
        std::vector<std::string> calls;

        bool supportsGentleScheduledUpdateReminders() override { return true; }
        bool shouldHandleShowingScheduledUpdate(bool) override {
            calls.emplace_back("should");
            return false;
        }
        void willHandleShowingUpdate(bool handledByUpdater, const std::string& version) override {
            calls.push_back((handledByUpdater ? "updater shows " : "program shows ") + version);
        }
        void didReceiveUserAttention() override { calls.emplace_back("attention"); }
        void willFinishUpdateSession() override { calls.emplace_back("finish"); }
    };

    Delegate delegate;
    Updater& updater() { return this->world.updater(); }
};

TYPED_TEST_SUITE_P(UpdaterContract);

TYPED_TEST_P(UpdaterContract, anObserverIsToldWhatHoldsNowAndThenOfEveryChange) {
    this->updater().create(this->delegate);
    int told = 0;
    bool seen = false;
    const auto observer = this->updater().observeCanCheck([&] {
        ++told;
        seen = this->updater().canCheckForUpdates();
    });
    ASSERT_TRUE(this->world.pumpUntil([&] { return told >= 1; }));
    const bool before = seen;
    EXPECT_EQ(before, this->updater().canCheckForUpdates());
    if (!this->world.changeCanCheck())
        GTEST_SKIP() << "whether a check is possible cannot be changed here";
    EXPECT_TRUE(this->world.pumpUntil([&] { return seen != before; }));
}

TYPED_TEST_P(UpdaterContract, anObserverWhoseHandleDiedIsToldNothing) {
    this->updater().create(this->delegate);
    int told = 0;
    int others = 0;
    auto observer = this->updater().observeCanCheck([&] { ++told; });
    const auto other = this->updater().observeCanCheck([&] { ++others; });
    ASSERT_TRUE(this->world.pumpUntil([&] { return told >= 1 && others >= 1; }));
    observer.reset();
    const int toldBefore = told;
    const int othersBefore = others;
    if (!this->world.changeCanCheck())
        GTEST_SKIP() << "whether a check is possible cannot be changed here";
    ASSERT_TRUE(this->world.pumpUntil([&] { return others > othersBefore; }));
    EXPECT_EQ(told, toldBefore);
}

TYPED_TEST_P(UpdaterContract, automaticChecksAreReadBackAsTheyWereSet) {
    this->updater().create(this->delegate);
    for (const bool automatic : {false, true, false}) {
        this->updater().setAutomaticallyChecksForUpdates(automatic);
        EXPECT_EQ(this->updater().automaticallyChecksForUpdates(), automatic);
    }
}

TYPED_TEST_P(UpdaterContract, aScheduledUpdateIsToldToTheDelegateFromItsFindToItsEnd) {
    this->updater().create(this->delegate);
    if (!this->world.findScheduledUpdate("9.8.7"))
        GTEST_SKIP() << "no update can be found here";
    auto& calls = this->delegate.calls;
    ASSERT_TRUE(this->world.pumpUntil([&] { return !calls.empty() && calls.back() == "finish"; }));
    EXPECT_EQ(calls,
              (std::vector<std::string>{"should", "program shows 9.8.7", "attention", "finish"}));
}

REGISTER_TYPED_TEST_SUITE_P(UpdaterContract, anObserverIsToldWhatHoldsNowAndThenOfEveryChange,
                            anObserverWhoseHandleDiedIsToldNothing,
                            automaticChecksAreReadBackAsTheyWereSet,
                            aScheduledUpdateIsToldToTheDelegateFromItsFindToItsEnd);

} // namespace orrivane
