#pragma once

#include <Orrivane/platform/ProcessLauncher.h>
#include <tests/support/contracts/Contract.h>

#include <optional>
#include <string>
#include <vector>

namespace orrivane {

/// The world also offers: `ProcessLauncher& launcher()`, `std::string program()` (a path whose
/// program succeeds), `std::string failingProgram()`, `std::string missingProgram()` (a path where
/// there is none) and `std::optional<std::vector<std::string>> argumentsSeen()` (what the program
/// behind the first two was last started with).
template <typename World>
class ProcessLauncherContract : public Contract<World> {
  protected:
    using Arguments = std::vector<std::string>;
    bool sees(const Arguments& arguments) {
        return this->world.pumpUntil([&] { return this->world.argumentsSeen() == arguments; });
    }
};

TYPED_TEST_SUITE_P(ProcessLauncherContract);

TYPED_TEST_P(ProcessLauncherContract, theProgramIsStartedWithItsArguments) {
    const typename TestFixture::Arguments arguments{"-currentHost", "two words", "", "$HOME *"};
    EXPECT_TRUE(this->world.launcher().launch(this->world.program(), arguments));
    EXPECT_TRUE(this->sees(arguments));
}

TYPED_TEST_P(ProcessLauncherContract, aProgramNeedsNoArguments) {
    EXPECT_TRUE(this->world.launcher().launch(this->world.program(), {}));
    EXPECT_TRUE(this->sees({}));
}

TYPED_TEST_P(ProcessLauncherContract, aProgramThatDoesNotExistIsNotLaunched) {
    EXPECT_FALSE(this->world.launcher().launch(this->world.missingProgram(), {"x"}));
    EXPECT_FALSE(this->world.argumentsSeen());
}

TYPED_TEST_P(ProcessLauncherContract, whatTheProgramDoesIsNotReported) {
    EXPECT_TRUE(this->world.launcher().launch(this->world.failingProgram(), {"x"}));
    EXPECT_TRUE(this->sees({"x"}));
}

REGISTER_TYPED_TEST_SUITE_P(ProcessLauncherContract, theProgramIsStartedWithItsArguments,
                            aProgramNeedsNoArguments, aProgramThatDoesNotExistIsNotLaunched,
                            whatTheProgramDoesIsNotReported);

} // namespace orrivane
