#include <linux/hosts/Tint2Host.h>

#include <linux/support/AtomicFile.h>
#include <tests/linux/support/Apart.h>

#include "TempDirectory.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace orrivane {
namespace {

using e2e::readFile;
using e2e::writeFile;

struct Tint2HostTest : testing::Test {
    e2e::TempDirectory folder;
    std::string config = folder.path() + "/tint2/tint2rc";
    std::string record = folder.path() + "/hosts/tint2";
    Tint2Host host{HostRecord(record)};

    [[nodiscard]] bool hasRecord() const { return std::filesystem::exists(record); }
};

struct Tint2HostFile : Tint2HostTest, testing::WithParamInterface<const char*> {};

TEST_P(Tint2HostFile, isGivenBackByteForByte) {
    const std::string text = GetParam();
    writeFile(config, text);
    std::filesystem::permissions(config, std::filesystem::perms(0640));
    for (const int reduction : {4, 12, -9, 3, 0, 5}) {
        ASSERT_TRUE(host.apply(config, reduction));
        EXPECT_EQ(readFile(config) == text, !hasRecord()) << reduction << readFile(config);
    }
    ASSERT_TRUE(host.reset());
    EXPECT_EQ(readFile(config), text);
    EXPECT_FALSE(hasRecord());
    EXPECT_EQ(std::filesystem::status(config).permissions(), std::filesystem::perms(0640));
}

INSTANTIATE_TEST_SUITE_P(
    Files, Tint2HostFile,
    testing::Values("systray_padding = 0 0 6\n", "systray_padding = 0 0 6",
                    "a = b\r\nsystray_padding = 0 4 6\r\nc = d\r\n",
                    "# systray_padding = 9 9 9\nsystray_padding = 3\nlast",
                    "systray_padding = 1 1 1\nsystray_padding = 0 0 9 # mine \n", "a = b",
                    "a = b\r\n", "",
                    // One line written twice: only the last one is changed.
                    "systray_padding = 0 0 6\nsystray_padding = 0 0 6\n"));

TEST_F(Tint2HostTest, theGapShrinksByWhatIsWantedButNotBelowNone) {
    writeFile(config, "systray_padding = 2 3 6\n");
    ASSERT_TRUE(host.apply(config, 4));
    EXPECT_EQ(readFile(config), "systray_padding = 2 3 2\n");
    // From the user's own gap again, not from what was made of it.
    ASSERT_TRUE(host.apply(config, 5));
    EXPECT_EQ(readFile(config), "systray_padding = 2 3 1\n");
    ASSERT_TRUE(host.apply(config, 12));
    EXPECT_EQ(readFile(config), "systray_padding = 2 3 0\n");
    ASSERT_TRUE(host.apply(config, -10));
    EXPECT_EQ(readFile(config), "systray_padding = 2 3 16\n");
    ASSERT_TRUE(host.apply(config, -1'000'000));
    EXPECT_EQ(readFile(config), "systray_padding = 2 3 1000\n");
}

TEST_F(Tint2HostTest, theDefaultSpacingIsTheUsersOwnGap) {
    writeFile(config, "systray_padding = 0 0 6\n");
    ASSERT_TRUE(host.apply(config, 4));
    ASSERT_TRUE(host.apply(config, 0));
    EXPECT_EQ(readFile(config), "systray_padding = 0 0 6\n");
    EXPECT_FALSE(hasRecord());
}

TEST_F(Tint2HostTest, aFileWithoutAGapIsLeftAlone) {
    writeFile(config, "panel_items = TSC\n");
    ASSERT_TRUE(host.apply(config, 8));
    EXPECT_EQ(readFile(config), "panel_items = TSC\n");
    EXPECT_FALSE(hasRecord());
    EXPECT_EQ(host.limitation(config), "The icons in this tray already stand without a gap.");
}

TEST_F(Tint2HostTest, aLineTheUserWroteSinceIsTheUsersOwn) {
    writeFile(config, "systray_padding = 0 0 6\n");
    ASSERT_TRUE(host.apply(config, 4));
    writeFile(config, "# new\nsystray_padding = 0 0 9\n");
    ASSERT_TRUE(host.reset());
    EXPECT_EQ(readFile(config), "# new\nsystray_padding = 0 0 9\n");
    EXPECT_FALSE(hasRecord());

    ASSERT_TRUE(host.apply(config, 4));
    writeFile(config, readFile(config) + "systray_padding = 0 0 12\n");
    ASSERT_TRUE(host.apply(config, 4));
    EXPECT_TRUE(readFile(config).ends_with("systray_padding = 0 0 8\n"));
    ASSERT_TRUE(host.reset());
    EXPECT_TRUE(readFile(config).ends_with("systray_padding = 0 0 12\n"));
}

TEST_F(Tint2HostTest, linesWrittenElsewhereSinceStayWhenTheGapIsGivenBack) {
    writeFile(config, "a = 1\nsystray_padding = 0 0 6\nb = 2\n");
    ASSERT_TRUE(host.apply(config, 4));
    auto edited = readFile(config);
    edited.replace(edited.find("a = 1"), 5, "a = one");
    writeFile(config, edited + "c = 3\n");
    ASSERT_TRUE(host.reset());
    EXPECT_EQ(readFile(config), "a = one\nsystray_padding = 0 0 6\nb = 2\nc = 3\n");
}

TEST_F(Tint2HostTest, anotherFileIsTakenOnlyAfterTheFirstWasGivenBack) {
    const auto other = folder.path() + "/other";
    writeFile(config, "systray_padding = 0 0 6\n");
    writeFile(other, "systray_padding = 0 0 20\n");
    ASSERT_TRUE(host.apply(config, 4));
    ASSERT_TRUE(host.apply(other, 4));
    EXPECT_EQ(readFile(config), "systray_padding = 0 0 6\n");
    EXPECT_EQ(readFile(other), "systray_padding = 0 0 16\n");
    ASSERT_TRUE(host.reset());
    EXPECT_EQ(readFile(other), "systray_padding = 0 0 20\n");
}

TEST_F(Tint2HostTest, aFileThatIsGoneNeedsNothingBack) {
    writeFile(config, "systray_padding = 0 0 6\n");
    ASSERT_TRUE(host.apply(config, 4));
    std::filesystem::remove(config);
    EXPECT_FALSE(host.apply(config, 4));
    EXPECT_TRUE(host.reset());
    EXPECT_FALSE(hasRecord());
    EXPECT_FALSE(std::filesystem::exists(config));
}

TEST_F(Tint2HostTest, anEndBetweenRecordAndFileLosesNothing) {
    writeFile(config, "systray_padding = 0 0 6\n");
    ASSERT_TRUE(host.apply(config, 4));
    // As if the program had ended before the file was written.
    writeFile(config, "systray_padding = 0 0 6\n");
    ASSERT_TRUE(host.apply(config, 5));
    EXPECT_EQ(readFile(config), "systray_padding = 0 0 1\n");
    ASSERT_TRUE(host.reset());
    EXPECT_EQ(readFile(config), "systray_padding = 0 0 6\n");
}

TEST_F(Tint2HostTest, aDamagedRecordChangesNothingAndIsKept) {
    writeFile(config, "systray_padding = 0 0 6\n");
    writeFile(record, "orrivane host record 1\nown=syst");
    EXPECT_FALSE(host.reset());
    EXPECT_EQ(readFile(config), "systray_padding = 0 0 6\n");
    EXPECT_EQ(readFile(record), "orrivane host record 1\nown=syst");
    ASSERT_TRUE(host.apply(config, 4));
    EXPECT_EQ(readFile(record + ".damaged"), "orrivane host record 1\nown=syst");
    ASSERT_TRUE(host.reset());
    EXPECT_EQ(readFile(config), "systray_padding = 0 0 6\n");
}

TEST_F(Tint2HostTest, anUnreadableFileAndOneInAClosedFolderStayAsTheyAre) {
    using std::filesystem::perms;
    const std::string text = "systray_padding = 0 0 6\n";
    writeFile(config, text);
    const auto closed = std::filesystem::path(config).parent_path();
    const auto refused = [&] { return !host.apply(config, 4) && !hasRecord(); };
    std::filesystem::permissions(folder.path(), perms(0777));
    std::filesystem::permissions(config, perms::none);
    EXPECT_TRUE(
        holdsForAnOrdinaryUser([&] { return refused() && !host.limitation(config).empty(); }));
    std::filesystem::permissions(config, perms(0666));
    std::filesystem::permissions(closed, perms(0555));
    EXPECT_TRUE(holdsForAnOrdinaryUser(refused));
    std::filesystem::permissions(closed, perms(0755));
    EXPECT_EQ(readFile(config), text);
}

TEST_F(Tint2HostTest, aFullDiskLeavesTheUsersFileWhole) {
    std::string text = "systray_padding = 0 0 6\n";
    text += "# " + std::string(4000, 'x') + "\n";
    writeFile(config, text);
    const auto child = fork();
    if (child == 0) {
        // Stands for the disk: the record still fits, the file does not.
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{1000, 1000};
        setrlimit(RLIMIT_FSIZE, &limit);
        const auto outcome = host.apply(config, 4);
        const auto why = config + " cannot be written (File too large)";
        _exit(!outcome && outcome.text() == why && !hasRecord() ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(readFile(config), text);
}

TEST_F(Tint2HostTest, aDiskTooFullToGiveBackKeepsTheRecord) {
    const auto text = "systray_padding = 0 0 6\n# " + std::string(4000, 'x');
    writeFile(config, text);
    ASSERT_TRUE(host.apply(config, 4));
    const auto tightened = readFile(config);
    const auto child = fork();
    if (child == 0) {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{1000, 1000};
        setrlimit(RLIMIT_FSIZE, &limit);
        _exit(!host.reset() && hasRecord() ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(readFile(config), tightened);
    ASSERT_TRUE(host.reset());
    EXPECT_EQ(readFile(config), text);
}

TEST_F(Tint2HostTest, anotherWriterAtWorkMakesItFail) {
    writeFile(config, "systray_padding = 0 0 6\n");
    {
        const FileLock busy(record);
        const auto outcome = host.apply(config, 4);
        EXPECT_FALSE(outcome);
        EXPECT_EQ(outcome.text(), "another program is at work on " + record);
        EXPECT_EQ(readFile(config), "systray_padding = 0 0 6\n");
    }
    ASSERT_TRUE(host.apply(config, 4));
    const FileLock busy(record);
    EXPECT_FALSE(host.reset());
    EXPECT_EQ(readFile(config), "systray_padding = 0 0 2\n");
}

TEST_F(Tint2HostTest, nothingIsChangedThatCouldNotBeGivenBack) {
    writeFile(config, "systray_padding = 0 0 6\n");
    const Tint2Host homeless{HostRecord("")};
    EXPECT_FALSE(homeless.apply(config, 4));
    EXPECT_TRUE(homeless.reset());
    EXPECT_EQ(readFile(config), "systray_padding = 0 0 6\n");
}

TEST_F(Tint2HostTest, aRecordThatCannotBeTakenBackIsSaidSo) {
    writeFile(config, "systray_padding = 0 0 6\n");
    ASSERT_TRUE(host.apply(config, 4));
    // What cannot be removed, and no user's permissions matter to.
    std::filesystem::rename(record, folder.path() + "/kept");
    std::filesystem::create_directories(record + "/inTheWay");
    const auto outcome = host.apply(config, 0);
    EXPECT_FALSE(outcome);
    EXPECT_NE(outcome.text().find("the record " + record + " cannot be removed"), std::string::npos)
        << outcome.text();
}

TEST_F(Tint2HostTest, aLinkedFileStaysALink) {
    const auto real = folder.path() + "/dotfiles/tint2rc";
    writeFile(real, "systray_padding = 0 0 6\n");
    std::filesystem::create_directories(folder.path() + "/tint2");
    std::filesystem::create_symlink(real, config);
    ASSERT_TRUE(host.apply(config, 4));
    EXPECT_TRUE(std::filesystem::is_symlink(config));
    EXPECT_EQ(readFile(real), "systray_padding = 0 0 2\n");
}

TEST_F(Tint2HostTest, theLimitationTellsOfTheUsersOwnGap) {
    writeFile(config, "systray_padding = 0 0 6\n");
    EXPECT_EQ(host.limitation(config), "");
    ASSERT_TRUE(host.apply(config, 16));
    EXPECT_EQ(readFile(config), "systray_padding = 0 0 0\n");
    EXPECT_EQ(host.limitation(config), "");
    EXPECT_NE(host.limitation(folder.path() + "/none"), "");
}

HostProcess panel(std::vector<std::string> arguments, std::vector<std::string> environment = {}) {
    return {1, "tint2", std::move(arguments), "/home/u", std::move(environment)};
}

TEST(Tint2ConfigFile, isTheOneThePanelWasStartedWith) {
    const auto file = [](const HostProcess& process) { return Tint2Host::configFile(process); };
    EXPECT_EQ(file(panel({"tint2", "-c", "/etc/x"})), "/etc/x");
    EXPECT_EQ(file(panel({"tint2", "-c", "rc"})), "/home/u/rc");
    EXPECT_EQ(file(panel({"tint2", "rc"})), "/home/u/rc");
    EXPECT_EQ(file(panel({"tint2"}, {"HOME=/home/u"})), "/home/u/.config/tint2/tint2rc");
    EXPECT_EQ(file(panel({"tint2", "-v"}, {"HOME=/home/u", "XDG_CONFIG_HOME=/c"})),
              "/c/tint2/tint2rc");
    EXPECT_EQ(file(panel({"tint2"}, {"XDG_CONFIG_HOME=", "HOME=/h"})), "/h/.config/tint2/tint2rc");
    EXPECT_EQ(file(panel({"tint2"})), "");
}

} // namespace
} // namespace orrivane
