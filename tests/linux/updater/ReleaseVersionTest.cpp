#include <linux/updater/ReleaseVersion.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orrivane {
namespace {

ReleaseVersion version(const std::string& text) {
    const auto parsed = ReleaseVersion::parse(text);
    EXPECT_TRUE(parsed) << text;
    return parsed.value_or(*ReleaseVersion::parse("0"));
}

TEST(ReleaseVersion, ordersNumbersByValueAndPreReleasesBeforeTheirRelease) {
    const std::vector<std::string> ascending{"0",
                                             "0.9",
                                             "1.0-alpha",
                                             "1.0-alpha.1",
                                             "1.0-alpha.2",
                                             "1.0-alpha.10",
                                             "1.0-beta",
                                             "1.0-rc.1",
                                             "1.0",
                                             "1.0.1",
                                             "1.2",
                                             "1.9.9",
                                             "1.10",
                                             "2",
                                             "10.0",
                                             "10.0.0.1",
                                             "99999999999999999999",
                                             "99999999999999999999.1"};
    for (std::size_t left = 0; left < ascending.size(); ++left)
        for (std::size_t right = 0; right < ascending.size(); ++right)
            EXPECT_EQ(version(ascending[left]) < version(ascending[right]), left < right)
                << ascending[left] << " and " << ascending[right];
}

TEST(ReleaseVersion, aLetterRightAfterANumberBeginsAPreRelease) {
    EXPECT_LT(version("2.0b3"), version("2.0"));
    EXPECT_LT(version("2.0b3"), version("2.0b10"));
    EXPECT_EQ(version("2.0b3"), version("2.0-b.3"));
    EXPECT_TRUE(version("2.0b3").isPreRelease());
    EXPECT_FALSE(version("2.0").isPreRelease());
}

TEST(ReleaseVersion, missingNumbersAreZerosAndNotesDoNotCount) {
    EXPECT_EQ(version("1"), version("1.0.0"));
    EXPECT_EQ(version("v1.2"), version("1.2"));
    EXPECT_EQ(version("01.002"), version("1.2"));
    EXPECT_EQ(version("1.2+build.7"), version("1.2"));
    EXPECT_EQ(version("1.0-RC1"), version("1.0-rc1"));
    EXPECT_EQ(version("1.0~rc1"), version("1.0-rc1"));
}

TEST(ReleaseVersion, anythingElseIsNoVersion) {
    for (const char* text : {"", "v", ".", "1.", ".1", "1..2", "1.0-", "1.0-rc.", "1.0+", "1.0 ",
                             " 1.0", "1,0", "-1", "1.0/2", "1.0+a b", "abc", "1.0-rc..1", "１.0"})
        EXPECT_FALSE(ReleaseVersion::parse(text)) << text;
    EXPECT_TRUE(ReleaseVersion::parse(std::string(64, '1')));
    EXPECT_FALSE(ReleaseVersion::parse(std::string(65, '1')));
}

} // namespace
} // namespace orrivane
