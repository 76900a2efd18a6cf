#include "ProgramOnDesktop.h"

#include <algorithm>
#include <cstdlib>
#include <map>

namespace orrivane::e2e {
namespace {

int luma(std::uint32_t pixel) {
    const int red = (pixel >> 16) & 0xff;
    const int green = (pixel >> 8) & 0xff;
    const int blue = pixel & 0xff;
    return (299 * red + 587 * green + 114 * blue) / 1000;
}

/// The colour that most of a picture has.
std::uint32_t ground(const Image& picture) {
    std::map<std::uint32_t, int> counts;
    for (const auto pixel : picture.pixels)
        ++counts[pixel];
    return std::ranges::max_element(counts, {}, [](const auto& each) { return each.second; })
        ->first;
}

/// The program on a notched desktop, with an icon of its own.
class ColorSchemeOnTheDesktop : public ProgramOnDesktop {
  protected:
    void startIn(std::vector<std::string> look) {
        look.insert(look.end(), fourItems.begin(), fourItems.end());
        start(look, everythingOpen(true));
        ASSERT_TRUE(waitFor("the own icon is docked", [&] { return ownIcon().has_value(); }));
    }
    /// What the large window shows; absent while there is none, or nothing in it yet.
    std::optional<Image> picture() {
        const auto window = windows().large(560, 300);
        auto image = window ? observer().imageOf(window->id) : std::nullopt;
        return image && image->colours() > 20 ? image : std::nullopt;
    }
    testing::AssertionResult becomes(bool dark) {
        const auto result = waitFor(dark ? "the window is dark" : "the window is light", [&] {
            const auto shown = picture();
            return shown && (dark ? luma(ground(*shown)) < 64 : luma(ground(*shown)) > 192);
        });
        keepPicture();
        return result;
    }
    /// Writes the screen to the folder that ORRIVANE_PICTURES names, to be looked at.
    void keepPicture() {
        if (const char* folder = std::getenv("ORRIVANE_PICTURES"))
            writePng(std::string(folder) + "/" +
                         testing::UnitTest::GetInstance()->current_test_info()->name() + ".png",
                     observer().imageOfRoot());
    }
};

TEST_F(ColorSchemeOnTheDesktop, theWindowIsDarkOnADarkDesktop) {
    startIn({"--dark"});
    ASSERT_EQ(launchAgain(), (ExitStatus{0, {}}));
    EXPECT_TRUE(becomes(true));
}

TEST_F(ColorSchemeOnTheDesktop, theWindowIsLightOnALightDesktop) {
    startIn({});
    ASSERT_EQ(launchAgain(), (ExitStatus{0, {}}));
    ASSERT_TRUE(becomes(false));
    EXPECT_TRUE(staysTrue(
        "it stays light",
        [&] {
            const auto shown = picture();
            return !shown || luma(ground(*shown)) > 192;
        },
        std::chrono::milliseconds(1000)));
}

TEST_F(ColorSchemeOnTheDesktop, thePopoverIsDarkOnADarkDesktop) {
    startIn({"--dark"});
    observer().click(ownIcon()->area.centre());
    EXPECT_TRUE(becomes(true));
}

TEST_F(ColorSchemeOnTheDesktop, thePopoverIsLightOnALightDesktop) {
    startIn({});
    observer().click(ownIcon()->area.centre());
    EXPECT_TRUE(becomes(false));
}

} // namespace
} // namespace orrivane::e2e
