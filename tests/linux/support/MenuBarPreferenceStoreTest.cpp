#include <linux/support/AtomicFile.h>
#include <linux/support/MenuBarPreferenceStore.h>
#include <linux/support/MenuBarPreferences.h>

#include "Apart.h"
#include "TempDirectory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace orrivane {
namespace {

constexpr auto spacing = MenuBarPreferences::spacingKey;
constexpr auto padding = MenuBarPreferences::selectionPaddingKey;

struct MenuBarPreferenceStoreTest : testing::Test {
    e2e::TempDirectory folder;
    std::string path =
        (std::filesystem::path(folder.path()) / "orrivane" / "menu-bar.conf").string();
    MenuBarPreferenceStore store{path};

    void write(const std::string& text) {
        std::filesystem::create_directories(std::filesystem::path(path).parent_path());
        std::ofstream(path) << text;
    }
    /// Whether a spacing that is set now is not stored, and the store says so.
    bool refuses() {
        store.setValue(spacing, 8);
        return !store.synchronize();
    }
    [[nodiscard]] std::string text() const {
        std::ifstream file(path);
        return {std::istreambuf_iterator<char>(file), {}};
    }
};

TEST_F(MenuBarPreferenceStoreTest, whatWasSetIsReadBackBeforeAndAfterItIsWritten) {
    store.setValue(spacing, 8);
    EXPECT_EQ(store.copyValue(spacing), 8);
    EXPECT_FALSE(std::filesystem::exists(path));
    EXPECT_TRUE(store.synchronize());
    EXPECT_EQ(store.copyValue(spacing), 8);
    EXPECT_EQ(MenuBarPreferenceStore(path).copyValue(spacing), 8);
    EXPECT_EQ(store.copyValue(padding), std::nullopt);
}

TEST_F(MenuBarPreferenceStoreTest, removingTheOnlyValuesLeavesAFileThatSetsNothing) {
    store.setValue(spacing, 8);
    store.setValue(padding, 6);
    store.synchronize();
    store.setValue(spacing, std::nullopt);
    store.setValue(padding, std::nullopt);
    EXPECT_EQ(store.copyValue(spacing), std::nullopt);
    EXPECT_TRUE(store.synchronize());
    EXPECT_EQ(text(), "");
}

TEST_F(MenuBarPreferenceStoreTest, everythingElseInTheFileStays) {
    write("# mine\nother = x\nNSStatusItemSpacing = 3 # tight\nNSStatusItemSpacing=9\nlast");
    store.setValue(spacing, 12);
    EXPECT_TRUE(store.synchronize());
    EXPECT_EQ(text(), "# mine\nother = x\nNSStatusItemSpacing = 12\nlast\n");
    store.setValue(spacing, std::nullopt);
    store.synchronize();
    EXPECT_EQ(text(), "# mine\nother = x\nlast\n");
}

TEST_F(MenuBarPreferenceStoreTest, aCommentBehindTheValueStays) {
    write("NSStatusItemSpacing = 3   # tight\n");
    store.setValue(spacing, 4);
    store.synchronize();
    EXPECT_EQ(text(), "NSStatusItemSpacing = 4 # tight\n");
}

TEST_F(MenuBarPreferenceStoreTest, theWholeRangeOfNumbersSurvives) {
    for (const auto value : {std::numeric_limits<std::int64_t>::min(), std::int64_t{0},
                             std::numeric_limits<std::int64_t>::max()}) {
        store.setValue(spacing, value);
        ASSERT_TRUE(store.synchronize());
        EXPECT_EQ(MenuBarPreferenceStore(path).copyValue(spacing), value);
    }
}

TEST_F(MenuBarPreferenceStoreTest, aValueThatIsNoNumberReadsAsNone) {
    write("NSStatusItemSpacing = wide\n");
    EXPECT_EQ(store.copyValue(spacing), std::nullopt);
}

TEST_F(MenuBarPreferenceStoreTest, whatAnotherProgramWroteInBetweenIsKept) {
    MenuBarPreferenceStore other(path);
    store.setValue(spacing, 8);
    other.setValue(padding, 5);
    EXPECT_TRUE(other.synchronize());
    EXPECT_TRUE(store.synchronize());
    EXPECT_EQ(text(), "NSStatusItemSelectionPadding = 5\nNSStatusItemSpacing = 8\n");
}

TEST_F(MenuBarPreferenceStoreTest, twoWritersNeverLoseEachOthersValues) {
    constexpr int rounds = 40;
    // On a slow disk the other one may hold the file for longer than a writer waits.
    const auto stored = [](MenuBarPreferenceStore& writer, std::string_view key, int value) {
        constexpr int mostTries = 100;
        for (int tries = 0; tries < mostTries; ++tries) {
            writer.setValue(key, value);
            if (writer.synchronize())
                return true;
        }
        return false;
    };
    const auto child = fork();
    if (child == 0) {
        bool written = true;
        for (int i = 1; i <= rounds; ++i) {
            MenuBarPreferenceStore mine(path);
            written = stored(mine, padding, i) && written;
        }
        _exit(written ? 0 : 1);
    }
    for (int i = 1; i <= rounds; ++i)
        EXPECT_TRUE(stored(store, spacing, i));
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    const auto result = MenuBarPreferences::read(path);
    EXPECT_EQ(result.spacing, rounds);
    EXPECT_EQ(result.selectionPadding, rounds);
}

TEST_F(MenuBarPreferenceStoreTest, aWriterThatHoldsTheFileTooLongMakesTheWriteFail) {
    const FileLock busy(path);
    store.setValue(spacing, 8);
    EXPECT_FALSE(store.synchronize());
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(MenuBarPreferenceStoreTest, aFileThatMayNotBeReadIsNotWrittenOver) {
    using std::filesystem::perms;
    write("# mine\nother = x\n");
    // The folder is everybody's, so that only the reading fails.
    std::filesystem::permissions(folder.path(), perms(0755));
    std::filesystem::permissions(std::filesystem::path(path).parent_path(), perms(0777));
    std::filesystem::permissions(path, perms::none);
    EXPECT_TRUE(holdsForAnOrdinaryUser([&] { return refuses(); }));
    std::filesystem::permissions(path, perms(0600));
    EXPECT_EQ(text(), "# mine\nother = x\n");
}

TEST_F(MenuBarPreferenceStoreTest, aPipeUnderTheNameHoldsNobodyUp) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_TRUE(holdsApart([&] { return refuses(); }));
    EXPECT_TRUE(std::filesystem::is_fifo(path));
}

TEST_F(MenuBarPreferenceStoreTest, aFolderUnderTheNameIsAFailureAndNoEnd) {
    std::filesystem::create_directories(path);
    EXPECT_TRUE(holdsApart([&] { return refuses(); }));
    EXPECT_TRUE(std::filesystem::is_empty(path));
}

TEST_F(MenuBarPreferenceStoreTest, aFileTooLargeToBeReadWholeStaysAsItIs) {
    const auto large = "# " + std::string(1 << 20, 'x') + "\n";
    write(large);
    EXPECT_TRUE(refuses());
    EXPECT_EQ(text(), large);
}

TEST_F(MenuBarPreferenceStoreTest, withoutAHomeNothingIsStored) {
    MenuBarPreferenceStore homeless("");
    homeless.setValue(spacing, 8);
    EXPECT_FALSE(homeless.synchronize());
    EXPECT_EQ(homeless.copyValue(spacing), std::nullopt);
}

} // namespace
} // namespace orrivane
