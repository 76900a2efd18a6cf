#include <linux/support/UserFolders.h>

#include "Apart.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

namespace orrivane {
namespace {

struct Row {
    const char* name;
    UserFolders::Sources sources;
    const char* configuration;
    const char* cache;
};

struct UserFoldersTest : testing::TestWithParam<Row> {};

TEST_P(UserFoldersTest, areWhereTheUserHasThem) {
    const auto folders = UserFolders::from(GetParam().sources);
    EXPECT_EQ(folders.configuration, GetParam().configuration);
    EXPECT_EQ(folders.cache, GetParam().cache);
}

INSTANTIATE_TEST_SUITE_P(
    Sources, UserFoldersTest,
    testing::Values(Row{"usual", {"", "", "/h", "/e"}, "/h/.config", "/h/.cache"},
                    Row{"configured", {"/c", "/d", "/h", "/e"}, "/c", "/d"},
                    Row{"configuredWithoutAHome", {"/c", "", "", ""}, "/c", ""},
                    Row{"relative", {"c", "./d", "/h", "/e"}, "/h/.config", "/h/.cache"},
                    Row{"noVariable", {"", "", "", "/e"}, "/e/.config", "/e/.cache"},
                    Row{"relativeHome", {"", "", "h", "/e"}, "/e/.config", "/e/.cache"},
                    Row{"relativeEntry", {"", "", "", "e"}, "", ""}, Row{"nothing", {}, "", ""},
                    Row{"root", {"", "", "/", ""}, "/.config", "/.cache"}),
    [](const auto& row) { return row.param.name; });

TEST(UserFoldersOfThisUser, comeFromTheUserDatabaseWithoutTheVariables) {
    const auto* entry = getpwuid(getuid());
    if (!entry || entry->pw_dir[0] != '/')
        GTEST_SKIP() << "this user has no home in the user database";
    const std::string home = entry->pw_dir;
    EXPECT_TRUE(holdsApart([&] {
        for (const char* name : {"HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME"})
            unsetenv(name);
        return UserFolders::ofThisUser().cache == UserFolders::file(home, ".cache");
    }));
    EXPECT_TRUE(holdsApart([] {
        setenv("HOME", "/somewhere", 1);
        setenv("XDG_CONFIG_HOME", "relative", 1);
        setenv("XDG_CACHE_HOME", "/cache", 1);
        const auto folders = UserFolders::ofThisUser();
        return folders.configuration == "/somewhere/.config" && folders.cache == "/cache";
    }));
}

TEST(UserFoldersFile, isNowhereWithoutAFolder) {
    EXPECT_EQ(UserFolders::file("/c", "orrivane/notch"), "/c/orrivane/notch");
    EXPECT_EQ(UserFolders::file("/", "notch"), "/notch");
    EXPECT_EQ(UserFolders::file("", "notch"), "");
}

} // namespace
} // namespace orrivane
