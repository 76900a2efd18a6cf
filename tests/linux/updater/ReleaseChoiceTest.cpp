#include <linux/updater/ReleaseChoice.h>

#include <tests/linux/updater/support/TestReleases.h>

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace orrivane {
namespace {

constexpr const char* folder = "https://example.org/files/";

ReleaseEntry entry(const std::string& version) {
    return release(version, folder + ("orrivane_" + version + "_amd64.deb"));
}

ReleaseChoice choose(const std::vector<ReleaseEntry>& entries, const std::string& running = "1.0",
                     const std::string& skipped = "") {
    return chooseRelease(entries, *PublicKey::fromBase64(testKeys().publicKey), running, skipped);
}

std::string offered(const ReleaseChoice& choice) {
    EXPECT_EQ(choice.problem, std::nullopt);
    return choice.offer ? choice.offer->entry.version : "none";
}

void expectRefused(const std::function<void(ReleaseEntry&)>& change, const std::string& reason) {
    const auto choice = choose({resigned(entry("2.0"), change)});
    EXPECT_FALSE(choice.offer);
    ASSERT_TRUE(choice.problem) << reason;
    EXPECT_NE(choice.problem->find(reason), std::string::npos) << *choice.problem;
}

TEST(ReleaseChoice, theNewestReleaseIsOfferedWhereverItStands) {
    EXPECT_EQ(offered(choose({entry("1.9"), entry("1.10"), entry("1.2")})), "1.10");
    const auto choice = choose({entry("1.10")});
    ASSERT_TRUE(choice.offer);
    EXPECT_EQ(choice.offer->fileName, "orrivane_1.10_amd64.deb");
    EXPECT_EQ(choice.offer->length, 7);
}

TEST(ReleaseChoice, neitherTheRunningVersionNorAnOlderOneIsOffered) {
    EXPECT_EQ(offered(choose({})), "none");
    EXPECT_EQ(offered(choose({entry("1.0")}, "1.0")), "none");
    EXPECT_EQ(offered(choose({entry("1.0.0")}, "1.0")), "none");
    EXPECT_EQ(offered(choose({entry("0.9")}, "1.0")), "none");
}

TEST(ReleaseChoice, aSkippedVersionIsNotOfferedButTheNextOneIs) {
    EXPECT_EQ(offered(choose({entry("2.0")}, "1.0", "2.0")), "none");
    EXPECT_EQ(offered(choose({entry("2.0"), entry("2.1")}, "1.0", "2.0")), "2.1");
    EXPECT_EQ(offered(choose({entry("2.0")}, "1.0", "nonsense")), "2.0");
}

TEST(ReleaseChoice, preReleasesAreForThoseWhoRunOne) {
    EXPECT_EQ(offered(choose({entry("2.0-rc.1")}, "1.0")), "none");
    EXPECT_EQ(offered(choose({entry("2.0-rc.1")}, "2.0-beta.1")), "2.0-rc.1");
    EXPECT_EQ(offered(choose({entry("2.0")}, "2.0-rc.1")), "2.0");
}

TEST(ReleaseChoice, entriesForOthersAreLeftOut) {
    const auto mac = resigned(entry("3.0"), [](auto& each) { each.system = "macos"; });
    const auto beta = resigned(entry("3.1"), [](auto& each) { each.channel = "beta"; });
    const auto fileless = resigned(entry("3.2"), [](auto& each) { each.address.clear(); });
    EXPECT_EQ(offered(choose({mac, beta, fileless, entry("2.0")})), "2.0");
    const auto any = resigned(entry("2.5"), [](auto& each) { each.system.clear(); });
    EXPECT_EQ(offered(choose({any, entry("2.0")})), "2.5");
}

TEST(ReleaseChoice, anEntryThatIsNotSignedByUsIsRefused) {
    const auto refused = [](const ReleaseEntry& each) {
        const auto choice = choose({each, entry("1.5")});
        return !choice.offer && choice.problem &&
               choice.problem->find("not signed by Orrivane") != std::string::npos;
    };
    EXPECT_TRUE(refused(release("2.0", folder + std::string("a.deb"), "package", foreignKeys())));
    auto unsignedEntry = entry("2.0");
    unsignedEntry.entrySignature.clear();
    EXPECT_TRUE(refused(unsignedEntry));
    auto changed = entry("2.0");
    changed.notes += "!";
    EXPECT_TRUE(refused(changed));
}

TEST(ReleaseChoice, aFileOnceReleasedCannotComeBackAsANewerVersion) {
    auto downgrade = entry("0.5");
    downgrade.version = "9.0";
    EXPECT_FALSE(choose({downgrade}).offer);
    EXPECT_TRUE(choose({downgrade}).problem);
}

TEST(ReleaseChoice, tricksInTheFileNameAreRefused) {
    for (const char* name : {"..%2f..%2fetc%2fpasswd.deb", "%2e%2e/a.deb", "../a.deb", ".a.deb",
                             "-a.deb", "a%00.deb", "a;b.deb", "a%20b.deb", "a.deb/", "", "a.sh",
                             "a.deb.sh", "a..deb", ".deb", "a%5cb.deb", "%2e%2e%2fa.deb"})
        expectRefused([&](auto& each) { each.address = folder + std::string(name); },
                      "the name of a Debian package");
    expectRefused([](auto& each) { each.address = folder + std::string(200, 'a') + ".deb"; },
                  "the name of a Debian package");
}

TEST(ReleaseChoice, aFileThatCannotBeOursIsRefused) {
    expectRefused([](auto& each) { each.type = "text/html"; }, "announced as a Debian package");
    for (const char* length : {"", "0", "-1", "seven", "7x", "1e3", "99999999999999999999"})
        expectRefused([&](auto& each) { each.length = length; }, "length of its file is not known");
    expectRefused([](auto& each) { each.length = "536870913"; }, "larger than 512 MiB");
    expectRefused([](auto& each) { each.fileSignature = "AAAA"; }, "its file is not signed");
    expectRefused([](auto& each) { each.fileSignature.clear(); }, "its file is not signed");
}

TEST(ReleaseChoice, aVersionThatCannotBeComparedSpoilsTheFeed) {
    const auto choice =
        choose({entry("2.0"), resigned(entry("3.0"), [](auto& each) { each.version = "latest"; })});
    EXPECT_FALSE(choice.offer);
    EXPECT_TRUE(choice.problem);
}

TEST(ReleaseChoice, aProgramWithoutAVersionIsToldSo) {
    EXPECT_TRUE(choose({entry("2.0")}, "unknown").problem);
}

} // namespace
} // namespace orrivane
