#pragma once

#include <Orrivane/platform/SystemLog.h>
#include <tests/support/contracts/Contract.h>

#include <string>
#include <vector>

namespace orrivane {

/// The world also offers: `SystemLog& log()` and `std::vector<std::string> lines()`, the messages
/// that arrived in the system's log, without what it puts before them.
template <typename World>
class SystemLogContract : public Contract<World> {
  protected:
    using Lines = std::vector<std::string>;
    bool arrive(std::size_t count) {
        return this->world.pumpUntil([&] { return this->world.lines().size() >= count; });
    }
};

TYPED_TEST_SUITE_P(SystemLogContract);

TYPED_TEST_P(SystemLogContract, linesArriveInTheirOrder) {
    this->world.log().write("Orrivane: first");
    this->world.log().write("Orrivane: second");
    ASSERT_TRUE(this->arrive(2));
    EXPECT_EQ(this->world.lines(),
              (typename TestFixture::Lines{"Orrivane: first", "Orrivane: second"}));
}

TYPED_TEST_P(SystemLogContract, aLineIsNeverReadAsAFormat) {
    const std::string line = "Orrivane: press failed for 100%s %n %@ %d";
    this->world.log().write(line);
    ASSERT_TRUE(this->arrive(1));
    EXPECT_EQ(this->world.lines(), typename TestFixture::Lines{line});
}

TYPED_TEST_P(SystemLogContract, onlyTheLineItselfIsWrittenAndNotWhatFollowsItInMemory) {
    const std::string text = "Orrivane: press failed and more";
    this->world.log().write(std::string_view(text).substr(0, 22));
    ASSERT_TRUE(this->arrive(1));
    EXPECT_EQ(this->world.lines(), typename TestFixture::Lines{"Orrivane: press failed"});
}

TYPED_TEST_P(SystemLogContract, aNameInAnyScriptIsWrittenAsItIs) {
    const std::string line = "Orrivane: Wörterbuch 辞書 — 🎧";
    this->world.log().write(line);
    ASSERT_TRUE(this->arrive(1));
    EXPECT_EQ(this->world.lines(), typename TestFixture::Lines{line});
}

REGISTER_TYPED_TEST_SUITE_P(SystemLogContract, linesArriveInTheirOrder, aLineIsNeverReadAsAFormat,
                            onlyTheLineItselfIsWrittenAndNotWhatFollowsItInMemory,
                            aNameInAnyScriptIsWrittenAsItIs);

} // namespace orrivane
