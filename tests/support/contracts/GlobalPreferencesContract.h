#pragma once

#include <Orrivane/platform/GlobalPreferences.h>
#include <tests/support/contracts/Contract.h>

#include <cstdint>
#include <limits>
#include <optional>

namespace orrivane {

/// The world also offers: `GlobalPreferences& preferences()` (empty at first), `void reopen()` (a
/// new body on what was written), `bool storeText(key)` (somebody stores a value that is no number)
/// and `bool makeUnwritable()`.
template <typename World>
class GlobalPreferencesContract : public Contract<World> {
  protected:
    GlobalPreferences& preferences() { return this->world.preferences(); }

    static constexpr std::string_view key = "NSStatusItemSpacing";
    static constexpr std::string_view otherKey = "NSStatusItemSelectionPadding";
};

TYPED_TEST_SUITE_P(GlobalPreferencesContract);

TYPED_TEST_P(GlobalPreferencesContract, aKeyNobodySetIsAbsent) {
    EXPECT_EQ(this->preferences().copyValue(this->key), std::nullopt);
}

TYPED_TEST_P(GlobalPreferencesContract, whatWasSetIsReadBack) {
    using Limits = std::numeric_limits<std::int64_t>;
    for (const auto value :
         {std::int64_t{6}, std::int64_t{0}, std::int64_t{-3}, Limits::min(), Limits::max()}) {
        this->preferences().setValue(this->key, value);
        EXPECT_EQ(this->preferences().copyValue(this->key), std::optional(value));
    }
    EXPECT_EQ(this->preferences().copyValue(this->otherKey), std::nullopt);
}

TYPED_TEST_P(GlobalPreferencesContract, anAbsentValueRemovesTheKey) {
    this->preferences().setValue(this->key, 6);
    this->preferences().setValue(this->otherKey, 4);
    this->preferences().setValue(this->key, std::nullopt);
    EXPECT_EQ(this->preferences().copyValue(this->key), std::nullopt);
    EXPECT_EQ(this->preferences().copyValue(this->otherKey), 4);
    this->preferences().setValue(this->key, std::nullopt);
    EXPECT_EQ(this->preferences().copyValue(this->key), std::nullopt);
}

TYPED_TEST_P(GlobalPreferencesContract, synchronisedValuesAndRemovalsOutliveTheProgram) {
    this->preferences().setValue(this->key, 6);
    this->preferences().setValue(this->otherKey, 4);
    ASSERT_TRUE(this->preferences().synchronize());
    this->world.reopen();
    EXPECT_EQ(this->preferences().copyValue(this->key), 6);
    EXPECT_EQ(this->preferences().copyValue(this->otherKey), 4);
    this->preferences().setValue(this->key, std::nullopt);
    ASSERT_TRUE(this->preferences().synchronize());
    this->world.reopen();
    EXPECT_EQ(this->preferences().copyValue(this->key), std::nullopt);
    EXPECT_EQ(this->preferences().copyValue(this->otherKey), 4);
}

TYPED_TEST_P(GlobalPreferencesContract, aValueThatIsNoNumberIsAbsentAndCanBeReplaced) {
    if (!this->world.storeText(this->key))
        GTEST_SKIP() << "nobody can store text here";
    EXPECT_EQ(this->preferences().copyValue(this->key), std::nullopt);
    this->preferences().setValue(this->key, 8);
    EXPECT_EQ(this->preferences().copyValue(this->key), 8);
}

TYPED_TEST_P(GlobalPreferencesContract, whatCannotBeWrittenIsSaidSo) {
    if (!this->world.makeUnwritable())
        GTEST_SKIP() << "the store cannot be made unwritable here";
    this->preferences().setValue(this->key, 6);
    EXPECT_FALSE(this->preferences().synchronize());
}

REGISTER_TYPED_TEST_SUITE_P(GlobalPreferencesContract, aKeyNobodySetIsAbsent, whatWasSetIsReadBack,
                            anAbsentValueRemovesTheKey,
                            synchronisedValuesAndRemovalsOutliveTheProgram,
                            aValueThatIsNoNumberIsAbsentAndCanBeReplaced,
                            whatCannotBeWrittenIsSaidSo);

} // namespace orrivane
