#include <linux/support/SmallFile.h>

#include "Apart.h"
#include "TempDirectory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace orrivane {
namespace {

using e2e::writeFile;

constexpr std::size_t largest = 1 << 20;

struct SmallFileTest : testing::Test {
    e2e::TempDirectory folder;
    std::string path = folder.path() + "/file";

    [[nodiscard]] bool isReadAs(const std::optional<std::string>& contents) const {
        return readSmallFile(path) == contents && readSmallFileToReplace(path) == contents;
    }
};

TEST_F(SmallFileTest, aFileIsReadWholeUpToAMegabyte) {
    for (const std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{4096}, largest}) {
        const std::string contents(size, '\n');
        writeFile(path, contents);
        EXPECT_TRUE(isReadAs(contents)) << size;
    }
    writeFile(path, std::string(largest + 1, 'x'));
    EXPECT_TRUE(isReadAs(std::nullopt));
}

TEST_F(SmallFileTest, whatIsNoFileIsAbsent) {
    std::filesystem::create_directories(path);
    EXPECT_TRUE(isReadAs(std::nullopt));
    std::filesystem::remove(path);
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_TRUE(holdsApart([this] { return isReadAs(std::nullopt); }));
    EXPECT_EQ(readSmallFile(""), std::nullopt);
}

TEST_F(SmallFileTest, aMissingFileIsEmptyOnlyToWhoeverReplacesIt) {
    EXPECT_EQ(readSmallFile(path), std::nullopt);
    EXPECT_EQ(readSmallFileToReplace(path), "");
    // A link to nowhere yet; and a folder that is a file, where nothing can be written.
    std::filesystem::create_symlink(folder.path() + "/none", path);
    EXPECT_EQ(readSmallFileToReplace(path), "");
    writeFile(folder.path() + "/other", "");
    EXPECT_EQ(readSmallFileToReplace(folder.path() + "/other/file"), std::nullopt);
}

TEST_F(SmallFileTest, aFileThatMayNotBeReadIsAbsent) {
    writeFile(path, "text");
    std::filesystem::permissions(folder.path(), std::filesystem::perms(0755));
    std::filesystem::permissions(path, std::filesystem::perms::none);
    EXPECT_TRUE(holdsForAnOrdinaryUser([this] { return isReadAs(std::nullopt); }));
}

TEST_F(SmallFileTest, aFileOfUnknownSizeIsReadToItsEnd) {
    const auto name = readSmallFile("/proc/self/comm");
    ASSERT_TRUE(name);
    EXPECT_EQ(name->find('\n'), name->size() - 1);
}

} // namespace
} // namespace orrivane
