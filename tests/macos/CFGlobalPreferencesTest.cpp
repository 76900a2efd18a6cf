#include <macos/system/CFGlobalPreferences.h>

#include <Orrivane/SqueezeEngine.h>
#include <tests/macos/MacSystemTest.h>
#include <tests/macos/fakes/PreferenceStore.h>

#include <limits>

namespace orrivane {
namespace {

struct CFGlobalPreferencesTest : MacSystemTest {
    fakes::PreferenceStore& store = fakes::PreferenceStore::shared();
    CFGlobalPreferences preferences;

    static constexpr auto key = "NSStatusItemSpacing";

    std::optional<std::int64_t> readOf(const fakes::Any& value) {
        store.values[key] = value;
        return preferences.copyValue(key);
    }
};

TEST_F(CFGlobalPreferencesTest, aValueOfAnotherTypeIsAbsent) {
    EXPECT_EQ(readOf(fakes::text("6")), std::nullopt);
    EXPECT_EQ(readOf(fakes::truth(true)), std::nullopt);
    EXPECT_EQ(readOf(fakes::list({fakes::integer(6)})), std::nullopt);
    EXPECT_EQ(readOf(fakes::table({})), std::nullopt);
    EXPECT_EQ(readOf(fakes::integer(6)), 6);
}

TEST_F(CFGlobalPreferencesTest, aNumberThatIsNoIntegerIsReadAsTheNearestOne) {
    using Limits = std::numeric_limits<std::int64_t>;
    EXPECT_EQ(readOf(fakes::real(6.75)), 6);
    EXPECT_EQ(readOf(fakes::real(1e300)), Limits::max());
    EXPECT_EQ(readOf(fakes::real(-1e300)), Limits::min());
    EXPECT_EQ(readOf(fakes::real(std::numeric_limits<double>::quiet_NaN())), 0);
}

TEST_F(CFGlobalPreferencesTest, aNumberThatCannotBeMadeDoesNotRemoveTheKey) {
    preferences.setValue(key, 6);
    fakes::Heap::shared().refuse<fakes::Number>(true);
    preferences.setValue(key, 8);
    EXPECT_EQ(preferences.copyValue(key), 6);
}

TEST_F(CFGlobalPreferencesTest, aKeyThatNoStringCanBeMadeOfIsAbsentAndCannotBeSet) {
    preferences.setValue("\xff", 6);
    EXPECT_TRUE(store.values.empty());
    EXPECT_EQ(preferences.copyValue("\xff"), std::nullopt);
}

TEST_F(CFGlobalPreferencesTest, aSpacingIsAppliedAndResetAcrossPrograms) {
    EXPECT_TRUE(SqueezeEngine::apply(6, preferences));
    EXPECT_EQ(SqueezeEngine::read(preferences), (SqueezeState{6, 4}));
    EXPECT_EQ(store.written.size(), 2U);
    EXPECT_TRUE(SqueezeEngine::reset(preferences));
    EXPECT_EQ(SqueezeEngine::read(preferences), SqueezeState{});
    EXPECT_TRUE(store.written.empty());
}

} // namespace
} // namespace orrivane
