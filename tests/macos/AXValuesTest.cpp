#include "AXFixture.h"

#include <limits>

namespace orrivane {
namespace {

using AXValuesTest = AXFixture;

const std::optional<AttributeValue> other{OtherAttributeValue{}};

TEST_F(AXValuesTest, geometryIsReadByTheTypeItWasPackedWith) {
    EXPECT_EQ(valueOf(fakes::rect(1300, 0, 30, 24)), AttributeValue(Rect{{1300, 0}, {30, 24}}));
    EXPECT_EQ(valueOf(fakes::point(1300, 5)), AttributeValue(Point{1300, 5}));
    EXPECT_EQ(valueOf(fakes::size(30, 24)), AttributeValue(Size{30, 24}));
}

TEST_F(AXValuesTest, aPackedValueOfAnotherTypeIsNoGeometry) {
    EXPECT_EQ(valueOf(fakes::packed(kAXValueTypeCFRange, {0, 5})), other);
    EXPECT_EQ(valueOf(fakes::packed(kAXValueTypeIllegal, {})), other);
    EXPECT_EQ(valueOf(fakes::packed(static_cast<AXValueType>(99), {1, 2, 3, 4})), other);
}

TEST_F(AXValuesTest, aPackedValueThatDoesNotUnpackIsNoGeometry) {
    EXPECT_EQ(valueOf(fakes::packed(kAXValueTypeCGRect, {1, 2})), other);
    EXPECT_EQ(valueOf(fakes::packed(kAXValueTypeCGPoint, {})), other);
    EXPECT_EQ(valueOf(fakes::packed(kAXValueTypeCGSize, {1})), other);
}

TEST_F(AXValuesTest, geometryWithANumberThatIsNotFiniteIsNone) {
    const auto infinity = std::numeric_limits<double>::infinity();
    const auto nan = std::numeric_limits<double>::quiet_NaN();
    for (const double bad : {infinity, -infinity, nan}) {
        for (std::size_t place = 0; place < 4; ++place) {
            std::vector<double> numbers{1, 2, 3, 4};
            numbers[place] = bad;
            EXPECT_EQ(valueOf(fakes::packed(kAXValueTypeCGRect, numbers)), other) << place;
        }
        EXPECT_EQ(valueOf(fakes::point(bad, 0)), other);
        EXPECT_EQ(valueOf(fakes::point(0, bad)), other);
        EXPECT_EQ(valueOf(fakes::size(bad, 0)), other);
        EXPECT_EQ(valueOf(fakes::size(0, bad)), other);
    }
}

TEST_F(AXValuesTest, aStringIsReadAndABrokenOneIsNone) {
    EXPECT_EQ(valueOf(fakes::text("AXMenu")), AttributeValue("AXMenu"));
    EXPECT_EQ(valueOf(fakes::text("")), AttributeValue(""));
    EXPECT_EQ(valueOf(fakes::brokenText()), other);
}

TEST_F(AXValuesTest, valuesNobodyAsksForAreToldApartFromAbsentOnes) {
    EXPECT_EQ(valueOf(fakes::integer(1)), other);
    EXPECT_EQ(valueOf(fakes::truth(true)), other);
    EXPECT_EQ(valueOf(fakes::table({{"X", fakes::real(1)}})), other);
}

TEST_F(AXValuesTest, aListKeepsItsOrderAndMarksWhatIsNoElement) {
    const auto node = server.makeNode(12);
    node->attributes["AXRole"] = fakes::gives(fakes::text("AXMenu"));
    const auto list = valueOf(fakes::list(
        {fakes::integer(1), fakes::elementHandle(node), fakes::Any(), fakes::list({})}));
    ASSERT_TRUE(list);
    const auto* members = std::get_if<AccessibilityElementList>(&*list);
    ASSERT_TRUE(members);
    ASSERT_EQ(members->size(), 4U);
    for (const std::size_t odd : {std::size_t{0}, std::size_t{2}, std::size_t{3}})
        EXPECT_FALSE((*members)[odd]) << odd;
    ASSERT_TRUE((*members)[1]);
    EXPECT_EQ(read<std::string>(*(*members)[1], "AXRole"), "AXMenu");
}

TEST_F(AXValuesTest, anEmptyListIsAListAndAChildThatIsNoneIsNoList) {
    EXPECT_EQ(valueOf(fakes::list({})), AttributeValue(AccessibilityElementList{}));
    EXPECT_EQ(valueOf(fakes::text("AXChildren")), AttributeValue("AXChildren"));
}

TEST_F(AXValuesTest, anElementIsKeptBeyondTheListItCameIn) {
    const auto node = server.makeNode(12);
    auto handle = fakes::elementHandle(node);
    const CFTypeRef object = handle.get();
    auto list = valueOf(fakes::list({std::move(handle)}));
    answer(fakes::givesNull());
    EXPECT_EQ(fakes::Heap::shared().references(object), 1);
    list.reset();
    EXPECT_EQ(fakes::Heap::shared().references(object), 0);
}

} // namespace
} // namespace orrivane
