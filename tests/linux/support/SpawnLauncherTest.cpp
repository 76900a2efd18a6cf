#include <linux/support/SpawnLauncher.h>

#include "TempDirectory.h"
#include "WaitFor.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace orrivane {
namespace {

using e2e::waitFor;

struct SpawnLauncherTest : testing::Test {
    e2e::TempDirectory folder;
    SpawnLauncher launcher;
    std::string output = (std::filesystem::path(folder.path()) / "output").string();

    [[nodiscard]] std::string firstLine() const {
        std::ifstream file(output);
        std::string line;
        std::getline(file, line);
        return line;
    }
};

TEST_F(SpawnLauncherTest, handsOverTheArgumentsAsTheyAre) {
    ASSERT_TRUE(launcher.launch(
        "/bin/sh", {"-c", "printf '%s|' \"$@\" > \"$0\"", output, "a b", "", "$HOME;*"}));
    EXPECT_TRUE(waitFor("it wrote", [&] { return firstLine() == "a b||$HOME;*|"; }));
}

TEST_F(SpawnLauncherTest, aMissingProgramIsAFailure) {
    EXPECT_FALSE(launcher.launch("/nowhere/program", {}));
}

TEST_F(SpawnLauncherTest, theProgramHasASessionOfItsOwnAndNoInput) {
    ASSERT_TRUE(launcher.launch(
        "/bin/sh", {"-c", "read x; echo \"$? $(ps -o sid= -p $$ | tr -d ' ')\" > \"$0\"", output}));
    ASSERT_TRUE(waitFor("it wrote", [&] { return !firstLine().empty(); }));
    EXPECT_TRUE(firstLine().starts_with("1 ")) << firstLine();
    EXPECT_NE(firstLine().substr(2), std::to_string(getsid(0)));
}

TEST_F(SpawnLauncherTest, noZombieStays) {
    ASSERT_TRUE(launcher.launch("/bin/sh", {"-c", "echo $$ > \"$0\"", output}));
    ASSERT_TRUE(waitFor("it wrote", [&] { return !firstLine().empty(); }));
    const auto process = "/proc/" + firstLine();
    EXPECT_TRUE(waitFor("it is gone", [&] { return !std::filesystem::exists(process); }));
}

} // namespace
} // namespace orrivane
