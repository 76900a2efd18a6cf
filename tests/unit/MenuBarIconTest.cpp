#include <Orrivane/MenuBarIcon.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace orrivane {
namespace {

Path limb(std::array<Point, 3> points, double width) {
    return {{MoveTo{points[0]}, LineTo{points[1]}, LineTo{points[2]}}, width, ColorRole::black, 1};
}

/// The rectangle that contains a path's points and, around them, half the width of its stroke.
Rect extent(const Path& path) {
    double left = 1e9;
    double top = 1e9;
    double right = -1e9;
    double bottom = -1e9;
    const auto include = [&](Point point) {
        left = std::min(left, point.x - path.strokeWidth / 2);
        right = std::max(right, point.x + path.strokeWidth / 2);
        top = std::min(top, point.y - path.strokeWidth / 2);
        bottom = std::max(bottom, point.y + path.strokeWidth / 2);
    };
    for (const auto& element : path.elements)
        std::visit(
            [&](const auto& each) {
                if constexpr (requires { each.to; })
                    include(each.to);
                if constexpr (requires { each.control1; }) {
                    include(each.control1);
                    include(each.control2);
                }
            },
            element);
    return {{left, top}, {right - left, bottom - top}};
}

TEST(MenuBarIcon, isATemplateOf22By18PointsNamedAfterTheProgram) {
    const auto image = MenuBarIcon::image();
    EXPECT_EQ(image.size, (Size{22, 18}));
    EXPECT_TRUE(image.isTemplate);
    EXPECT_EQ(image.accessibilityName, "Orrivane");
}

TEST(MenuBarIcon, isAFilledHeadAndTorsoThenArmsThenLegs) {
    const auto image = MenuBarIcon::image();
    const std::vector<Primitive> expected{
        Oval{{{7.5, 0.7}, {3.5, 3.5}}, ColorRole::black, 1},
        Path{{MoveTo{{8.0, 5.2}}, CurveTo{{8.7, 4.8}, {10.1, 4.8}, {10.8, 5.2}},
              LineTo{{11.2, 10.2}}, LineTo{{8.1, 10.2}}, ClosePath{}},
             0,
             ColorRole::black,
             1},
        limb({{{8.4, 5.9}, {5.5, 8.4}, {3.8, 6.4}}}, 1.8),
        limb({{{10.5, 5.9}, {13.4, 8.4}, {15.1, 6.4}}}, 1.8),
        limb({{{9.0, 10.0}, {5.9, 12.5}, {6.8, 16.2}}}, 2.2),
        limb({{{10.3, 10.0}, {14.4, 13.0}, {18.5, 16.2}}}, 2.2)};
    EXPECT_EQ(image.primitives, expected);
}

TEST(MenuBarIcon, theRoundEndsOfBothLegsReachTheirFullLength) {
    const auto image = MenuBarIcon::image();
    const auto leftLeg = extent(std::get<Path>(image.primitives.at(4)));
    const auto rightLeg = extent(std::get<Path>(image.primitives.at(5)));
    EXPECT_DOUBLE_EQ(rightLeg.maxX(), 19.6);
    EXPECT_DOUBLE_EQ(rightLeg.maxY(), 17.3);
    EXPECT_DOUBLE_EQ(leftLeg.maxY(), 17.3);
}

TEST(MenuBarIcon, nothingOfItLiesOutsideTheCanvas) {
    const auto image = MenuBarIcon::image();
    for (const auto& primitive : image.primitives) {
        const auto* oval = std::get_if<Oval>(&primitive);
        const auto rect = oval ? oval->rect : extent(std::get<Path>(primitive));
        EXPECT_GE(rect.minX(), 0);
        EXPECT_GE(rect.minY(), 0);
        EXPECT_LE(rect.maxX(), image.size.width);
        EXPECT_LE(rect.maxY(), image.size.height);
    }
}

TEST(MenuBarIcon, everyImageIsANewEqualOne) {
    EXPECT_EQ(MenuBarIcon::image(), MenuBarIcon::image());
}

} // namespace
} // namespace orrivane
