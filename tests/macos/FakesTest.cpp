#include <tests/macos/fakes/Session.h>
#include <tests/macos/fakes/Values.h>

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <optional>

/// What the other tests of this folder rely on: that a wrong use of an object does not go unseen.
namespace orrivane::fakes {
namespace {

/// What the end of a session says after `use`.
template <typename Use>
std::vector<std::string> findings(Use use) {
    testing::TestPartResultArray results;
    {
        testing::ScopedFakeTestPartResultReporter reporter(
            testing::ScopedFakeTestPartResultReporter::INTERCEPT_ONLY_CURRENT_THREAD, &results);
        Session session;
        use();
    }
    std::vector<std::string> messages;
    for (int i = 0; i < results.size(); ++i)
        messages.emplace_back(results.GetTestPartResult(i).message());
    return messages;
}

/// That one finding, and this one, is what `use` gives.
template <typename Use>
void expectFinding(const std::string& expected, Use use) {
    const auto messages = findings(use);
    ASSERT_EQ(messages.size(), 1U) << testing::PrintToString(messages);
    EXPECT_NE(messages.front().find(expected), std::string::npos) << messages.front();
}

TEST(FakesTest, aBalancedUseIsFine) {
    EXPECT_EQ(findings([] {
                  const auto object = integer(1);
                  CFRelease(CFRetain(object.get()));
              }),
              std::vector<std::string>());
}

TEST(FakesTest, anObjectThatIsNeverReleasedIsFound) {
    expectFinding("never released", [] { (void)integer(1).detach(); });
    expectFinding("never released", [] { CFRetain(integer(1).get()); });
}

TEST(FakesTest, anObjectThatIsReleasedTooOftenOrUsedAfterwardsIsFound) {
    expectFinding("release of an object that has been released", [] {
        const auto object = integer(1);
        CFRelease(object.get());
    });
    expectFinding("type of an object that has been released", [] {
        const auto object = integer(1).get();
        CFGetTypeID(object);
    });
    expectFinding("retain of an object that has been released", [] {
        const auto object = integer(1).get();
        CFRetain(object);
    });
}

TEST(FakesTest, nullAndStrayPointersAreFound) {
    int stray = 0;
    expectFinding("release of null", [] { CFRelease(nullptr); });
    expectFinding("retain of null", [] { CFRetain(nullptr); });
    expectFinding("type of null", [] { CFGetTypeID(nullptr); });
    expectFinding("no object", [&] { CFRelease(&stray); });
}

TEST(FakesTest, aCastToAnotherTypeIsFound) {
    const std::string expected = "an object of another type was given";
    expectFinding(expected, [] {
        const auto object = text("6");
        CFBooleanGetValue(static_cast<CFBooleanRef>(object.get()));
    });
    expectFinding(expected, [] {
        const auto object = table({});
        CFArrayGetCount(static_cast<CFArrayRef>(object.get()));
    });
}

TEST(FakesTest, aConstantOutOfBalanceIsFound) {
    expectFinding("constant", [] { CFRelease(kCGWindowLayer); });
    expectFinding("constant", [] { CFRetain(kCGWindowLayer); });
}

TEST(FakesTest, aContainerHoldsItsMembersAsLongAsItLives) {
    const Session session;
    auto member = integer(1);
    const auto object = member.get();
    auto holder = std::optional(list({member}));
    member = {};
    EXPECT_EQ(Heap::shared().references(object), 1);
    holder.reset();
    EXPECT_EQ(Heap::shared().references(object), 0);
}

} // namespace
} // namespace orrivane::fakes
