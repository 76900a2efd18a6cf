#include "support/CaptureDesk.h"

namespace orrivane::x11 {
namespace {

// What a picture shows.
using CaptureTest = CaptureDesk;

TEST_F(CaptureTest, anIconOf24BitsIsOpaqueWhateverItsPaddingHolds) {
    startTray();
    const auto image = take(addPainted(pattern()));
    ASSERT_TRUE(image);
    EXPECT_EQ(halved(*image, 6), opaque(pattern()));
}

TEST_F(CaptureTest, anIconOf32BitsKeepsItsPremultipliedPixels) {
    startTray();
    Pixels pixels(width * height, 0x80402010U);
    pixels[0] = 0;
    pixels[1] = 0xffffffffU;
    pixels[2] = 0x01010101U;
    const auto image = take(addPainted(pixels, 1400, 3, 32));
    ASSERT_TRUE(image);
    EXPECT_EQ(halved(*image, 6), pixels);
}

TEST_F(CaptureTest, anIconIsDrawnWhereItStandsInTheBand) {
    setCutout({656, 0, 200, 37});
    startTray();
    const auto image = take(addPainted(pattern(), 1400, 9), 2 * width, 74);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->pixelWidth(), 2 * width);
    EXPECT_EQ(image->pixelHeight(), 74);
    EXPECT_EQ(halved(*image, 18), opaque(pattern()));
    for (int x = 0; x < image->pixelWidth(); ++x) {
        EXPECT_EQ(image->at(x, 17), 0U);
        EXPECT_EQ(image->at(x, 18 + 2 * height), 0U);
    }
}

TEST_F(CaptureTest, anIconThatLooksAsItDidKeepsItsImage) {
    startTray();
    const auto icon = addPainted(pattern());
    const auto* first = take(icon);
    EXPECT_EQ(take(icon), first);
    auto changed = pattern();
    changed.back() ^= 1U;
    app.paint(icon, width, height, changed);
    const auto* second = take(icon);
    ASSERT_NE(second, first);
    EXPECT_EQ(halved(*second, 6), opaque(changed));
}

TEST_F(CaptureTest, anImageOfAnotherSizeOrPlaceIsDrawnAnew) {
    startTray();
    const auto icon = addPainted(pattern());
    const auto* first = take(icon);
    const auto* higher = take(icon, 2 * width, 58);
    ASSERT_NE(higher, first);
    EXPECT_EQ(higher->pixelHeight(), 58);
    tray->client.move(tree().find(icon)->parent, {1400, 8, width, height});
    EXPECT_EQ(halved(*take(icon, 2 * width, 58), 16), opaque(pattern()));
}

TEST_F(CaptureTest, whatLiesOutsideTheBandIsCutOff) {
    setCutout({656, 2, 200, 2});
    startTray();
    const auto image = take(addPainted(pattern(), 1400, 1), 2 * width, 4);
    ASSERT_TRUE(image);
    const auto whole = opaque(pattern());
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 2 * width; ++x) {
            const auto row = static_cast<std::size_t>(1 + y / 2);
            EXPECT_EQ(image->at(x, y), whole[row * width + static_cast<std::size_t>(x / 2)]);
        }
}

TEST_F(CaptureTest, atTwoPixelsAPointAnIconIsTakenAsItIs) {
    scale = 2;
    startTray({0, 0, 1512, 56});
    const auto image = take(addPainted(pattern()), width, 56);
    ASSERT_TRUE(image);
    const auto whole = opaque(pattern());
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            EXPECT_EQ(image->at(x, 3 + y), whole[static_cast<std::size_t>(y * width + x)]);
}

TEST_F(CaptureTest, atOneAndAHalfPixelsAPointAnIconFillsItsCanvas) {
    scale = 1.5;
    startTray({0, 0, 1512, 42});
    const auto icon = addIcon({1400, 3, 24, 24});
    app.paint(icon, 24, 24, Pixels(24 * 24, 0x123456U));
    const auto image = take(icon, 32, 56); // 24 pixels are 16 points
    ASSERT_TRUE(image);
    for (const int y : {4, 20, 35})
        for (const int x : {0, 15, 31})
            EXPECT_EQ(image->at(x, y), 0xff123456U) << x << ' ' << y;
    EXPECT_EQ(image->at(16, 3), 0U);
    EXPECT_EQ(image->at(16, 36), 0U);
}

TEST_F(CaptureTest, anIconThatIsResizedIsTakenInItsNewSize) {
    startTray();
    const auto icon = addPainted(pattern());
    XClient other(server.display());
    coverWith(other);
    settle();
    capture(icon, 2 * width, 56);
    loop.advance(1);
    app.move(icon, {0, 0, 2 * width, 2 * height});
    app.paint(icon, 2 * width, 2 * height, Pixels(4 * width * height, 0x224466U));
    const auto image = take(icon, 4 * width, 56);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->at(4 * width - 1, 6 + 4 * height - 1), 0xff224466U);
    EXPECT_EQ(image->at(0, 6 + 4 * height), 0U);
}

TEST_F(CaptureTest, whatIsNoItemGivesNoImage) {
    startTray();
    const auto gone = addPainted(pattern());
    const auto unmapped = addPainted(pattern(), 1380);
    const auto inputOnly = addIcon({1360, 3, 6, 4}, {.inputOnly = true});
    const auto ordinary = app.create({});
    app.map(ordinary);
    app.destroy(gone);
    app.unmap(unmapped);
    for (const auto window : {gone, unmapped, inputOnly, ordinary, std::uint32_t{0}, app.root()})
        EXPECT_FALSE(take(window)) << window;
}

TEST_F(CaptureTest, anIconThatVanishesBetweenTheCallAndTheReadGivesNoImage) {
    startTray();
    const auto icon = addPainted(pattern());
    const auto stays = addPainted(pattern(3), 1300);
    settle();
    port().items.current();
    const auto shot = capture(icon, 2 * width, 56);
    const auto other = capture(stays, 2 * width, 56);
    app.unmap(icon); // the event is still under way when the request is sent
    loop.advance(1);
    EXPECT_EQ(shot->answers, 1);
    EXPECT_FALSE(shot->image());
    ASSERT_TRUE(other->image());
    EXPECT_EQ(halved(*other->image(), 6), opaque(pattern(3)));
}

TEST_F(CaptureTest, anIconThatIsPartlyOutsideTheScreenGivesNoImageAndNoHarm) {
    startTray();
    const auto icon = addPainted(pattern(), 1509);
    EXPECT_FALSE(take(icon));
    EXPECT_TRUE(take(addPainted(pattern(), 1300)));
}

} // namespace
} // namespace orrivane::x11
