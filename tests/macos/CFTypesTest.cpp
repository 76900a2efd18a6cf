#include <macos/system/CFTypes.h>

#include <tests/macos/MacSystemTest.h>
#include <tests/macos/fakes/Values.h>

#include <limits>

namespace orrivane {
namespace {

using namespace std::string_literals;

struct CFTypesTest : MacSystemTest {
    using Values = std::vector<fakes::Any>;

    /// One of every type there is, and null.
    static Values everything() {
        return {fakes::integer(1), fakes::truth(true), fakes::text("1"), fakes::list({}),
                fakes::table({}),  fakes::point(1, 2), fakes::Any()};
    }
};

TEST_F(CFTypesTest, everyReaderTakesItsOwnTypeAndNoOther) {
    const auto values = everything();
    for (std::size_t i = 0; i < values.size(); ++i) {
        const CFTypeRef object = values[i].get();
        EXPECT_EQ(cf::number(object) != nullptr, i == 0) << i;
        EXPECT_EQ(cf::integer(object).has_value(), i == 0) << i;
        EXPECT_EQ(cf::unsignedInteger(object).has_value(), i == 0) << i;
        EXPECT_EQ(cf::boolean(object).has_value(), i == 1) << i;
        EXPECT_EQ(cf::string(object) != nullptr, i == 2) << i;
        EXPECT_EQ(cf::text(object).has_value(), i == 2) << i;
        EXPECT_EQ(cf::array(object) != nullptr, i == 3) << i;
        EXPECT_EQ(cf::dictionary(object) != nullptr, i == 4) << i;
    }
}

TEST_F(CFTypesTest, aBooleanIsReadAsItStands) {
    EXPECT_EQ(cf::boolean(fakes::truth(true).get()), true);
    EXPECT_EQ(cf::boolean(fakes::truth(false).get()), false);
}

TEST_F(CFTypesTest, integersAreReadOverTheirWholeRange) {
    using Limits = std::numeric_limits<std::int64_t>;
    for (const auto value :
         {std::int64_t{0}, std::int64_t{-1}, std::int64_t{25}, Limits::min(), Limits::max()})
        EXPECT_EQ(cf::integer(fakes::integer(value).get()), value);
}

TEST_F(CFTypesTest, aRealIsAnIntegerOnlyWhereNothingIsLost) {
    EXPECT_EQ(cf::integer(fakes::real(25).get()), 25);
    const auto infinity = std::numeric_limits<double>::infinity();
    const auto nan = std::numeric_limits<double>::quiet_NaN();
    for (const double value : {25.5, 1e300, -1e300, 0x1p63, infinity, -infinity, nan})
        EXPECT_EQ(cf::integer(fakes::real(value).get()), std::nullopt) << value;
}

TEST_F(CFTypesTest, anUnsignedIntegerMustFitInto32Bits) {
    EXPECT_EQ(cf::unsignedInteger(fakes::integer(0).get()), 0U);
    EXPECT_EQ(cf::unsignedInteger(fakes::integer(0xffffffff).get()), 0xffffffffU);
    for (const std::int64_t value : {std::int64_t{-1}, std::int64_t{0x100000000}})
        EXPECT_EQ(cf::unsignedInteger(fakes::integer(value).get()), std::nullopt) << value;
}

TEST_F(CFTypesTest, textKeepsEveryCharacterOfEveryLength) {
    for (const auto& text : {""s, "Wi-Fi"s, "a\0b"s, "\xc3\xa9"s, "\xe2\x82\xac uro"s,
                             "\xf0\x9f\x94\x8b"s, std::string(5000, 'x')})
        EXPECT_EQ(cf::text(fakes::text(text).get()), text);
}

TEST_F(CFTypesTest, halfACharacterIsNoText) {
    EXPECT_EQ(cf::text(fakes::brokenText().get()), std::nullopt);
}

TEST_F(CFTypesTest, aMadeStringReadsBackAndAMalformedOneIsNone) {
    for (const auto& text : {""s, "AXFrame"s, "\xf0\x9f\x94\x8b"s})
        EXPECT_EQ(cf::text(cf::makeString(text).get()), text);
    for (const auto& text : {"\xff"s, "\xc3"s, "\xed\xa0\x80"s, "\xc0\x80"s, "\xf4\x90\x80\x80"s})
        EXPECT_FALSE(cf::makeString(text));
}

TEST_F(CFTypesTest, aMadeNumberReadsBack) {
    const auto lowest = std::numeric_limits<std::int64_t>::min();
    EXPECT_EQ(cf::integer(cf::makeNumber(lowest).get()), lowest);
}

TEST_F(CFTypesTest, whatTheSystemCannotMakeIsEmpty) {
    fakes::Heap::shared().refuse<fakes::Text>(true);
    fakes::Heap::shared().refuse<fakes::Number>(true);
    EXPECT_FALSE(cf::makeString("AXFrame"));
    EXPECT_FALSE(cf::makeNumber(6));
}

} // namespace
} // namespace orrivane
