#pragma once

#include <Orrivane/platform/LoginService.h>
#include <tests/support/contracts/Contract.h>

namespace orrivane {

/// The world also offers: `LoginService& service()` (not registered at first), `void reopen()` (a
/// new body for the same user) and `bool refuse()` (the system refuses changes from now on).
template <typename World>
class LoginServiceContract : public Contract<World> {
  protected:
    LoginService& service() { return this->world.service(); }
    bool isRegistered() {
        const auto status = service().status();
        return status == LoginItemStatus::enabled || status == LoginItemStatus::requiresApproval;
    }
};

TYPED_TEST_SUITE_P(LoginServiceContract);

TYPED_TEST_P(LoginServiceContract, registeringAndUnregisteringChangeTheStatus) {
    EXPECT_FALSE(this->isRegistered());
    EXPECT_EQ(this->service().registerItem(), std::nullopt);
    EXPECT_TRUE(this->isRegistered());
    EXPECT_EQ(this->service().unregisterItem(), std::nullopt);
    EXPECT_FALSE(this->isRegistered());
}

TYPED_TEST_P(LoginServiceContract, aRegistrationOutlivesTheProgram) {
    ASSERT_EQ(this->service().registerItem(), std::nullopt);
    this->world.reopen();
    EXPECT_TRUE(this->isRegistered());
    ASSERT_EQ(this->service().unregisterItem(), std::nullopt);
    this->world.reopen();
    EXPECT_FALSE(this->isRegistered());
}

TYPED_TEST_P(LoginServiceContract, registeringTwiceIsHarmless) {
    ASSERT_EQ(this->service().registerItem(), std::nullopt);
    EXPECT_EQ(this->service().registerItem(), std::nullopt);
    EXPECT_TRUE(this->isRegistered());
}

TYPED_TEST_P(LoginServiceContract, aRefusalComesBackAsTextAndChangesNothing) {
    if (!this->world.refuse())
        GTEST_SKIP() << "the system cannot be made to refuse here";
    const auto error = this->service().registerItem();
    ASSERT_TRUE(error);
    EXPECT_FALSE(error->empty());
    EXPECT_FALSE(this->isRegistered());
}

REGISTER_TYPED_TEST_SUITE_P(LoginServiceContract, registeringAndUnregisteringChangeTheStatus,
                            aRegistrationOutlivesTheProgram, registeringTwiceIsHarmless,
                            aRefusalComesBackAsTextAndChangesNothing);

} // namespace orrivane
