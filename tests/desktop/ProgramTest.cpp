#include "Desktop.h"
#include "WaitFor.h"

#include <chrono>
#include <cstdlib>

namespace orrivane::e2e {
namespace {

/// The harness's way with the program, tried on a stand-in.
class StandInDesktop : public testing::Test {
  protected:
    void SetUp() override {
        setenv("ORRIVANE_PROGRAM", ORRIVANE_STAND_IN, 1);
        Desktop::Options options;
        options.host = "";
        desktop_.emplace(options);
        desktop_->setCutout(666, 846);
    }

    std::optional<Desktop> desktop_;
};

TEST_F(StandInDesktop, findsTheStripInsideTheCutoutsBand) {
    EXPECT_FALSE(desktop_->strip());
    ChildProcess& program = desktop_->startProgram({"500", "2", "100", "30"});
    const WindowState strip = desktop_->waitForStrip();
    EXPECT_EQ(strip.area, (PixelRect{500, 2, 100, 30}));
    EXPECT_EQ(desktop_->programWindows().size(), 1u);
    EXPECT_EQ(program.terminate(std::chrono::seconds(5)), (ExitStatus{0, {}}));
    EXPECT_TRUE(waitFor("the strip goes with the program", [&] { return !desktop_->strip(); }));
}

TEST_F(StandInDesktop, takesNoWindowBelowTheBandForTheStrip) {
    desktop_->startProgram({"500", "2", "100", "36"});
    ASSERT_TRUE(waitFor("the window shows", [&] { return !desktop_->programWindows().empty(); }));
    EXPECT_TRUE(staysTrue(
        "a window that sticks out of the band is no strip", [&] { return !desktop_->strip(); },
        std::chrono::milliseconds(50)));
}

TEST_F(StandInDesktop, givesTheProgramAHomeOfItsOwn) {
    desktop_->startProgram({"500", "2", "100", "30"});
    desktop_->waitForStrip();
    const Environment surroundings = desktop_->environment("orrivane");
    EXPECT_EQ(surroundings.at("HOME"), desktop_->programHome());
    EXPECT_TRUE(surroundings.at("XDG_CONFIG_HOME").starts_with(desktop_->directory()));
    const std::string pid = std::to_string(desktop_->program().pid());
    const std::string variables = readFile("/proc/" + pid + "/environ");
    EXPECT_NE(variables.find("HOME=" + desktop_->programHome() + '\0'), std::string::npos);
}

} // namespace
} // namespace orrivane::e2e
