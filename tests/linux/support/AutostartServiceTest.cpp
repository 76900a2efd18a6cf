#include <linux/support/AutostartService.h>

#include "Apart.h"
#include "TempDirectory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sys/stat.h>

namespace orrivane {
namespace {

struct AutostartServiceTest : testing::Test {
    e2e::TempDirectory folder;
    std::string path =
        (std::filesystem::path(folder.path()) / "autostart" / "orrivane.desktop").string();
    AutostartService service{path, "/opt/orrivane/bin/orrivane"};

    [[nodiscard]] std::string text() const {
        std::ifstream file(path);
        return {std::istreambuf_iterator<char>(file), {}};
    }
};

TEST_F(AutostartServiceTest, registersAndUnregisters) {
    EXPECT_EQ(service.status(), LoginItemStatus::notRegistered);
    EXPECT_EQ(service.registerItem(), std::nullopt);
    EXPECT_EQ(service.status(), LoginItemStatus::enabled);
    EXPECT_NE(text().find("\nExec=\"/opt/orrivane/bin/orrivane\"\n"), std::string::npos);
    EXPECT_EQ(service.unregisterItem(), std::nullopt);
    EXPECT_EQ(service.status(), LoginItemStatus::notRegistered);
}

TEST_F(AutostartServiceTest, whatTheUserSwitchedOffElsewhereWaitsForApproval) {
    ASSERT_EQ(service.registerItem(), std::nullopt);
    for (const auto* line : {"Hidden=true", "X-GNOME-Autostart-enabled=false", "Hidden = true ",
                             "X-GNOME-Autostart-enabled\t=  false\r"}) {
        std::ofstream(path) << "[Desktop Entry]\nExec=orrivane\n" << line << "\n";
        EXPECT_EQ(service.status(), LoginItemStatus::requiresApproval) << line;
    }
    EXPECT_EQ(service.registerItem(), std::nullopt);
    EXPECT_EQ(service.status(), LoginItemStatus::enabled);
}

TEST_F(AutostartServiceTest, anActionsLineIsNotTheEntrys) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream(path) << "[Desktop Entry]\nExec=x\n[Desktop Action y]\nHidden=true\n";
    EXPECT_EQ(service.status(), LoginItemStatus::enabled);
}

TEST_F(AutostartServiceTest, aFileThatStartsNothingIsNoRegistration) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    for (const auto* text :
         {"", "Exec=x\n", "[Desktop Entry]\nName=x\n[Desktop Action y]\nExec=x\n",
          "[Desktop Entry]\nExec=\n"}) {
        std::ofstream(path) << text;
        EXPECT_EQ(service.status(), LoginItemStatus::notRegistered) << text;
    }
}

TEST_F(AutostartServiceTest, whatIsNoFileIsNoEntry) {
    std::filesystem::create_directories(path);
    EXPECT_EQ(service.status(), LoginItemStatus::notRegistered);
    std::filesystem::remove(path);
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_TRUE(holdsApart([&] { return service.status() == LoginItemStatus::notRegistered; }));
}

TEST_F(AutostartServiceTest, unregisteringTwiceIsNoFailure) {
    EXPECT_EQ(service.unregisterItem(), std::nullopt);
}

TEST_F(AutostartServiceTest, aFolderThatCannotBeMadeIsNamed) {
    std::ofstream(std::filesystem::path(folder.path()) / "autostart") << "";
    const auto problem = service.registerItem();
    ASSERT_TRUE(problem);
    EXPECT_NE(problem->find(path), std::string::npos);
}

TEST_F(AutostartServiceTest, withoutAHomeThereIsNothingToBeFound) {
    AutostartService homeless("", "/bin/true");
    EXPECT_EQ(homeless.status(), LoginItemStatus::notFound);
    EXPECT_NE(homeless.registerItem(), std::nullopt);
    EXPECT_EQ(homeless.unregisterItem(), std::nullopt);
}

// Desktop Entry Specification, "The Exec key".
TEST_F(AutostartServiceTest, everyPathIsQuoted) {
    EXPECT_NE(AutostartService::entry("/a b/50%/x$y`z\"q\\r")
                  .find("\nExec=\"/a b/50%%/x\\\\$y\\\\`z\\\\\"q\\\\\\\\r\"\n"),
              std::string::npos);
}

} // namespace
} // namespace orrivane
