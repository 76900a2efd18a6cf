#include <linux/support/AtomicFile.h>

#include "TempDirectory.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace orrivane {
namespace {

std::string contentsOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

struct AtomicFileTest : testing::Test {
    e2e::TempDirectory folder;
    std::string path = (std::filesystem::path(folder.path()) / "deep" / "down" / "file").string();

    std::size_t filesBeside() const {
        const auto parent = std::filesystem::path(path).parent_path();
        return static_cast<std::size_t>(
            std::distance(std::filesystem::directory_iterator(parent), {}));
    }
};

TEST_F(AtomicFileTest, makesTheFoldersOnTheWay) {
    EXPECT_EQ(replaceFile(path, "new"), std::nullopt);
    EXPECT_EQ(contentsOf(path), "new");
    EXPECT_EQ(filesBeside(), 1U);
}

TEST_F(AtomicFileTest, keepsTheMode) {
    replaceFile(path, "old");
    std::filesystem::permissions(path, std::filesystem::perms(0600));
    replaceFile(path, "new");
    EXPECT_EQ(std::filesystem::status(path).permissions(), std::filesystem::perms(0600));
}

TEST_F(AtomicFileTest, followsALink) {
    const auto real = std::filesystem::path(folder.path()) / "real";
    std::ofstream(real) << "old";
    const auto link = std::filesystem::path(folder.path()) / "link";
    std::filesystem::create_symlink(real, link);
    EXPECT_EQ(replaceFile(link.string(), "new"), std::nullopt);
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_EQ(contentsOf(real.string()), "new");
}

TEST_F(AtomicFileTest, aFullDiskLeavesTheOldContentsAndNothingElse) {
    replaceFile(path, "old");
    const auto child = fork();
    if (child == 0) {
        // The limit stands for the disk: a write beyond it fails.
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{10, 10};
        setrlimit(RLIMIT_FSIZE, &limit);
        _exit(replaceFile(path, std::string(1000, 'x')) ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0) << "it should have told of a failure";
    EXPECT_EQ(contentsOf(path), "old");
    EXPECT_EQ(filesBeside(), 1U);
}

TEST_F(AtomicFileTest, aFolderThatIsAFileIsSaidSo) {
    std::ofstream(std::filesystem::path(folder.path()) / "deep") << "";
    EXPECT_NE(replaceFile(path, "new"), std::nullopt);
}

TEST_F(AtomicFileTest, oneHoldsTheLockAtATime) {
    std::optional<FileLock> first(std::in_place, path);
    EXPECT_TRUE(first->isHeld());
    EXPECT_FALSE(FileLock(path).isHeld());
    first.reset();
    EXPECT_TRUE(FileLock(path).isHeld());
}

} // namespace
} // namespace orrivane
