#pragma once

#include <Orrivane/platform/UserDefaults.h>
#include <tests/support/contracts/Contract.h>

namespace orrivane {

/// The world also offers: `UserDefaults& defaults()` (nothing stored at first), `void reopen()` (a
/// new body on what the old one stored) and `bool changeElsewhere(key, value)` (another process, or
/// another body on the same store, stores a value).
template <typename World>
class UserDefaultsContract : public Contract<World> {
  protected:
    UserDefaults& defaults() { return this->world.defaults(); }
    static constexpr std::string_view key = "OrrivaneContractKey";
    static constexpr std::string_view otherKey = "OrrivaneContractOtherKey";
};

TYPED_TEST_SUITE_P(UserDefaultsContract);

TYPED_TEST_P(UserDefaultsContract, aKeyNobodyKnowsReadsFalse) {
    EXPECT_FALSE(this->defaults().boolForKey(this->key));
}

TYPED_TEST_P(UserDefaultsContract, aFallbackIsReadWhileNothingIsStored) {
    this->defaults().registerDefault(this->key, true);
    EXPECT_TRUE(this->defaults().boolForKey(this->key));
    EXPECT_FALSE(this->defaults().boolForKey(this->otherKey));
}

TYPED_TEST_P(UserDefaultsContract, aStoredValueHidesTheFallback) {
    this->defaults().registerDefault(this->key, true);
    this->defaults().setBool(this->key, false);
    EXPECT_FALSE(this->defaults().boolForKey(this->key));
    this->defaults().setBool(this->key, true);
    EXPECT_TRUE(this->defaults().boolForKey(this->key));
}

TYPED_TEST_P(UserDefaultsContract, aFallbackRegisteredLaterLeavesTheStoredValueAlone) {
    this->defaults().setBool(this->key, false);
    this->defaults().registerDefault(this->key, true);
    EXPECT_FALSE(this->defaults().boolForKey(this->key));
}

TYPED_TEST_P(UserDefaultsContract, storedValuesOutliveTheProgramAndFallbacksDoNot) {
    this->defaults().registerDefault(this->otherKey, true);
    this->defaults().setBool(this->key, true);
    this->world.reopen();
    EXPECT_TRUE(this->defaults().boolForKey(this->key));
    EXPECT_FALSE(this->defaults().boolForKey(this->otherKey));
}

TYPED_TEST_P(UserDefaultsContract, aStoredFalseOutlivesTheProgramToo) {
    this->defaults().setBool(this->key, false);
    this->world.reopen();
    this->defaults().registerDefault(this->key, true);
    EXPECT_FALSE(this->defaults().boolForKey(this->key));
}

TYPED_TEST_P(UserDefaultsContract, aChangeIsToldAfterItHappened) {
    int told = 0;
    bool seen = false;
    const auto observer = this->defaults().onChange([&] {
        ++told;
        seen = this->defaults().boolForKey(this->key);
    });
    EXPECT_EQ(told, 0);
    this->defaults().setBool(this->key, true);
    ASSERT_TRUE(this->world.pumpUntil([&] { return told > 0; }));
    EXPECT_TRUE(seen);
}

TYPED_TEST_P(UserDefaultsContract, aChangeSomebodyElseMadeIsToldToo) {
    bool seen = false;
    const auto observer =
        this->defaults().onChange([&] { seen = this->defaults().boolForKey(this->key); });
    if (!this->world.changeElsewhere(this->key, true))
        GTEST_SKIP() << "nobody else can store values for this body";
    EXPECT_TRUE(this->world.pumpUntil([&] { return seen; }));
}

TYPED_TEST_P(UserDefaultsContract, anObserverWhoseHandleDiedIsToldNothing) {
    int told = 0;
    int others = 0;
    auto observer = this->defaults().onChange([&] { ++told; });
    const auto other = this->defaults().onChange([&] { ++others; });
    observer.reset();
    this->defaults().setBool(this->key, true);
    ASSERT_TRUE(this->world.pumpUntil([&] { return others > 0; }));
    EXPECT_EQ(told, 0);
}

REGISTER_TYPED_TEST_SUITE_P(UserDefaultsContract, aKeyNobodyKnowsReadsFalse,
                            aFallbackIsReadWhileNothingIsStored, aStoredValueHidesTheFallback,
                            aFallbackRegisteredLaterLeavesTheStoredValueAlone,
                            storedValuesOutliveTheProgramAndFallbacksDoNot,
                            aStoredFalseOutlivesTheProgramToo, aChangeIsToldAfterItHappened,
                            aChangeSomebodyElseMadeIsToldToo,
                            anObserverWhoseHandleDiedIsToldNothing);

} // namespace orrivane
