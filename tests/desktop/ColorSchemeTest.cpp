#include "NotchedDesktop.h"
#include "WaitFor.h"

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
class ColorSchemeOnTheDesktop : public testing::Test {
  protected:
    void start(std::vector<std::string> arguments) {
        arguments.insert(arguments.end(), {"--items", "battery,wifi,volume,mail", "--no-windows",
                                           "--panel", "760,0,150,37"});
        desktop_.emplace(arguments);
        writeFile(desktop_->configFolder() + "/orrivane/orrivane.conf",
                  "[General]\nOrrivaneShowStatusItem=true\nOrrivaneArrangeExpanded=true\n"
                  "OrrivaneSqueezeShown=true\n");
        program_.emplace(launch("program"));
        ASSERT_TRUE(waitFor("the own icon is docked", [&] { return ownIcon().has_value(); }));
    }
    ChildProcess launch(const std::string& name) {
        ChildProcess::Options options;
        options.arguments = {ORRIVANE_E2E_PROGRAM};
        options.environment = desktop_->environment();
        options.logFile = folder_.path() + "/" + name + ".log";
        return ChildProcess(std::move(options));
    }
    Observer& observer() { return desktop_->observer(); }

    std::optional<WindowState> ownIcon() {
        for (const auto& icon : desktop_->icons())
            if (icon.isViewable() && observer().pidOf(icon.id) == program_->pid())
                return icon;
        return std::nullopt;
    }
    std::optional<WindowState> largeWindow() {
        for (const auto& window : observer().tree())
            if (window.isViewable() && window.area.width >= 560 && window.area.height >= 300 &&
                observer().pidOf(window.id) == program_->pid())
                return window;
        return std::nullopt;
    }
    /// What the large window shows; absent while there is none, or nothing in it yet.
    std::optional<Image> picture() {
        const auto window = largeWindow();
        auto image = window ? observer().imageOf(window->id) : std::nullopt;
        return image && image->colours() > 20 ? image : std::nullopt;
    }
    bool openWindow() {
        auto second = launch("second");
        return second.wait(std::chrono::seconds(10)) == (ExitStatus{0, {}});
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

    TempDirectory folder_;
    std::optional<NotchedDesktop> desktop_;
    std::optional<ChildProcess> program_;
};

TEST_F(ColorSchemeOnTheDesktop, theWindowIsDarkOnADarkDesktop) {
    start({"--dark"});
    ASSERT_TRUE(openWindow());
    EXPECT_TRUE(becomes(true));
}

TEST_F(ColorSchemeOnTheDesktop, theWindowIsLightOnALightDesktop) {
    start({});
    ASSERT_TRUE(openWindow());
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
    start({"--dark"});
    observer().click(ownIcon()->area.centre());
    EXPECT_TRUE(becomes(true));
}

TEST_F(ColorSchemeOnTheDesktop, thePopoverIsLightOnALightDesktop) {
    start({});
    observer().click(ownIcon()->area.centre());
    EXPECT_TRUE(becomes(false));
}

} // namespace
} // namespace orrivane::e2e
