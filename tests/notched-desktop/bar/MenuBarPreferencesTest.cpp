#include <linux/support/MenuBarPreferences.h>

#include "TempDirectory.h"

#include <cstdlib>
#include <optional>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace orrivane {
namespace {

using e2e::TempDirectory;
using e2e::writeFile;

std::optional<std::int64_t> spacing(std::string_view text) {
    return MenuBarPreferences::parse(text).spacing;
}

TEST(MenuBarPreferencesTest, nothingIsSetByAnEmptyText) {
    EXPECT_EQ(MenuBarPreferences::parse(""), MenuBarPreferences{});
    EXPECT_EQ(MenuBarPreferences::parse("\n\n"), MenuBarPreferences{});
}

TEST(MenuBarPreferencesTest, bothKeysAreRead) {
    const MenuBarPreferences expected{8, 6};
    EXPECT_EQ(MenuBarPreferences::parse("NSStatusItemSpacing = 8\nNSStatusItemSelectionPadding=6"),
              expected);
}

TEST(MenuBarPreferencesTest, blanksCommentsAndCarriageReturnsDoNotCount) {
    EXPECT_EQ(spacing("  NSStatusItemSpacing\t=  8 \r\n"), 8);
    EXPECT_EQ(spacing("NSStatusItemSpacing = 8 # tight\n"), 8);
    EXPECT_EQ(spacing("# NSStatusItemSpacing = 8\n"), std::nullopt);
    EXPECT_EQ(spacing("NSStatusItemSpacing # = 8\n"), std::nullopt);
}

TEST(MenuBarPreferencesTest, numbersAreHandedOnAsTheyStand) {
    EXPECT_EQ(spacing("NSStatusItemSpacing = 0"), 0);
    EXPECT_EQ(spacing("NSStatusItemSpacing = -12"), -12);
    EXPECT_EQ(spacing("NSStatusItemSpacing = 007"), 7);
    EXPECT_EQ(spacing("NSStatusItemSpacing = 9223372036854775807"), INT64_MAX);
    EXPECT_EQ(spacing("NSStatusItemSpacing = -9223372036854775808"), INT64_MIN);
}

TEST(MenuBarPreferencesTest, whatIsNoIntegerSetsNothing) {
    for (const char* value : {"", "+8", "8.0", "8 9", "0x8", "eight", "- 8", "--8", "8px",
                              "9223372036854775808", "\"8\"", "8="})
        EXPECT_EQ(spacing(std::string("NSStatusItemSpacing = ") + value), std::nullopt) << value;
}

TEST(MenuBarPreferencesTest, linesThatSayNothingAreSkippedAndTheLastValidOneCounts) {
    EXPECT_EQ(spacing("NSStatusItemSpacing = 5\nnonsense\nNSStatusItemSpacing = 9\n"
                      "NSStatusItemSpacing = wide\nnsstatusitemspacing = 3\nOther = 4\n= 2\n"),
              9);
}

TEST(MenuBarPreferencesTest, bytesOfAnyKindDoNoHarm) {
    std::string noise;
    for (int i = 0; i < 4096; ++i)
        noise += static_cast<char>(i * 37);
    EXPECT_EQ(spacing(noise + "\nNSStatusItemSpacing = 4\n" + noise), 4);
}

TEST(MenuBarPreferencesTest, aFileIsReadLikeItsText) {
    const TempDirectory folder;
    const auto path = folder.path() + "/menu-bar.conf";
    EXPECT_EQ(MenuBarPreferences::read(path), MenuBarPreferences{});
    writeFile(path, "NSStatusItemSpacing = 11\n");
    EXPECT_EQ(MenuBarPreferences::read(path).spacing, 11);
}

TEST(MenuBarPreferencesTest, whatIsNoSmallRegularFileSetsNothing) {
    const TempDirectory folder;
    EXPECT_EQ(MenuBarPreferences::read(folder.path()), MenuBarPreferences{});
    EXPECT_EQ(MenuBarPreferences::read(""), MenuBarPreferences{});
    const auto pipe = folder.path() + "/pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(MenuBarPreferences::read(pipe), MenuBarPreferences{});
    const auto large = folder.path() + "/large";
    writeFile(large, "NSStatusItemSpacing = 1\n" + std::string(1 << 20, '#'));
    EXPECT_EQ(MenuBarPreferences::read(large), MenuBarPreferences{});
}

class Variable {
  public:
    Variable(const char* name, const char* value)
        : name_(name) {
        if (const char* now = std::getenv(name))
            before_ = now;
        value != nullptr ? setenv(name, value, 1) : unsetenv(name);
    }
    ~Variable() { before_ ? setenv(name_, before_->c_str(), 1) : unsetenv(name_); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

  private:
    const char* name_;
    std::optional<std::string> before_;
};

TEST(MenuBarPreferencesTest, theUsersFileIsInTheConfigurationFolder) {
    const Variable home("HOME", "/home/someone");
    {
        const Variable config("XDG_CONFIG_HOME", "/elsewhere");
        EXPECT_EQ(MenuBarPreferences::userFile(), "/elsewhere/orrivane/menu-bar.conf");
    }
    for (const char* unusable : {static_cast<const char*>(nullptr), "", "relative/folder"}) {
        const Variable config("XDG_CONFIG_HOME", unusable);
        EXPECT_EQ(MenuBarPreferences::userFile(), "/home/someone/.config/orrivane/menu-bar.conf");
    }
}

} // namespace
} // namespace orrivane
