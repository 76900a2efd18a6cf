#include <linux/support/AtomicFile.h>

#include "TempDirectory.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
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
    EXPECT_TRUE(replaceFile(path, "new"));
    EXPECT_EQ(contentsOf(path), "new");
    EXPECT_EQ(filesBeside(), 1U);
}

TEST_F(AtomicFileTest, keepsTheMode) {
    ASSERT_TRUE(replaceFile(path, "old"));
    std::filesystem::permissions(path, std::filesystem::perms(0600));
    ASSERT_TRUE(replaceFile(path, "new"));
    EXPECT_EQ(std::filesystem::status(path).permissions(), std::filesystem::perms(0600));
}

TEST_F(AtomicFileTest, followsALink) {
    const auto real = std::filesystem::path(folder.path()) / "real";
    std::ofstream(real) << "old";
    const auto link = std::filesystem::path(folder.path()) / "link";
    std::filesystem::create_symlink(real, link);
    EXPECT_TRUE(replaceFile(link.string(), "new"));
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_EQ(contentsOf(real.string()), "new");
}

TEST_F(AtomicFileTest, aFullDiskLeavesTheOldContentsAndNothingElse) {
    ASSERT_TRUE(replaceFile(path, "old"));
    const auto child = fork();
    if (child == 0) {
        // The limit stands for the disk: a write beyond it fails.
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{10, 10};
        setrlimit(RLIMIT_FSIZE, &limit);
        const auto outcome = replaceFile(path, std::string(1000, 'x'));
        _exit(!outcome && outcome.text() == std::strerror(EFBIG) ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0) << "it should have told of a failure";
    EXPECT_EQ(contentsOf(path), "old");
    EXPECT_EQ(filesBeside(), 1U);
}

TEST_F(AtomicFileTest, aCrashLeavesTheOldOrTheNewContentsWhole) {
    constexpr int rounds = 30;
    constexpr std::size_t size = 200000;
    const std::string old(size, 'o');
    const std::string fresh(size, 'n');
    for (int round = 0; round < rounds; ++round) {
        ASSERT_TRUE(replaceFile(path, old));
        std::array<int, 2> ready{};
        ASSERT_EQ(pipe(ready.data()), 0);
        const auto child = fork();
        if (child == 0) {
            static_cast<void>(!write(ready[1], "x", 1));
            for (;;) {
                static_cast<void>(replaceFile(path, fresh));
                static_cast<void>(replaceFile(path, old));
            }
        }
        char byte = 0;
        EXPECT_EQ(read(ready[0], &byte, 1), 1);
        // At another moment of its work each time.
        usleep(static_cast<useconds_t>(round) * 211);
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        close(ready[0]);
        close(ready[1]);
        const auto now = contentsOf(path);
        EXPECT_TRUE(now == old || now == fresh) << now.size() << " bytes";
    }
}

TEST_F(AtomicFileTest, aFolderThatIsAFileIsSaidSo) {
    std::ofstream(std::filesystem::path(folder.path()) / "deep") << "";
    const auto outcome = replaceFile(path, "new");
    EXPECT_FALSE(outcome);
    EXPECT_FALSE(outcome.text().empty());
}

TEST_F(AtomicFileTest, anEmptyPathIsNowhere) {
    std::filesystem::current_path(folder.path());
    EXPECT_FALSE(replaceFile("", "new"));
    EXPECT_FALSE(FileLock("").isHeld());
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
    std::filesystem::current_path("/");
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
