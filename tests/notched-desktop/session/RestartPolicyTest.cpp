#include <desktop/session/RestartPolicy.h>

#include <gtest/gtest.h>

namespace orrivane::desktop {
namespace {

TEST(RestartPolicy, aProgramThatEndsNowAndThenIsStartedForEver) {
    RestartPolicy policy;
    for (int i = 0; i < 1000; ++i)
        EXPECT_TRUE(policy.mayRestart(i * 3.0));
}

TEST(RestartPolicy, theFifthEndInTenSecondsIsTheLast) {
    RestartPolicy policy;
    for (const double now : {0.0, 2.0, 4.0, 6.0})
        EXPECT_TRUE(policy.mayRestart(now));
    EXPECT_FALSE(policy.mayRestart(10.0));
}

TEST(RestartPolicy, anEndMoreThanTenSecondsAgoDoesNotCount) {
    RestartPolicy policy;
    for (const double now : {0.0, 2.0, 4.0, 6.0, 10.1})
        EXPECT_TRUE(policy.mayRestart(now));
    EXPECT_FALSE(policy.mayRestart(10.2));
}

} // namespace
} // namespace orrivane::desktop
