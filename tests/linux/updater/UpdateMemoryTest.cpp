#include <linux/updater/UpdateMemory.h>

#include <tests/linux/support/Apart.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace orrivane {
namespace {

struct UpdateMemoryTest : ::testing::Test {
    QTemporaryDir folder;
    std::string path = folder.filePath("deep/updates").toStdString();

    void write(const char* text) {
        UpdateMemory(path).setLastCheck(0); // makes the folder
        QFile file(QString::fromStdString(path));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
};

TEST_F(UpdateMemoryTest, nothingIsAllowedBeforeTheUserSaysSo) {
    const UpdateMemory memory(path);
    EXPECT_FALSE(memory.checksAutomatically());
    EXPECT_EQ(memory.lastCheck(), 0);
    EXPECT_EQ(memory.skippedVersion(), "");
}

TEST_F(UpdateMemoryTest, theNextRunFindsWhatThisOneStored) {
    UpdateMemory memory(path);
    memory.setChecksAutomatically(true);
    memory.setLastCheck(1.7e9);
    memory.setSkippedVersion("2.0-rc.1");
    const UpdateMemory next(path);
    EXPECT_TRUE(next.checksAutomatically());
    EXPECT_EQ(next.lastCheck(), 1.7e9);
    EXPECT_EQ(next.skippedVersion(), "2.0-rc.1");
}

TEST_F(UpdateMemoryTest, whatCannotBeReadCountsAsNeverSet) {
    write("checks-automatically=perhaps\nlast-check=yesterday\n=\nrubbish\n");
    const UpdateMemory memory(path);
    EXPECT_FALSE(memory.checksAutomatically());
    EXPECT_EQ(memory.lastCheck(), 0);
}

TEST_F(UpdateMemoryTest, unknownLinesDoNotHideTheKnownOnes) {
    write("later=1\nchecks-automatically=true\nskipped-version=3.0\n");
    const UpdateMemory memory(path);
    EXPECT_TRUE(memory.checksAutomatically());
    EXPECT_EQ(memory.skippedVersion(), "3.0");
}

TEST_F(UpdateMemoryTest, aFileThatCannotBeWrittenIsNoReasonToStop) {
    UpdateMemory memory("/proc/none/updates");
    memory.setSkippedVersion("2.0");
    EXPECT_EQ(memory.skippedVersion(), "2.0");
}

TEST_F(UpdateMemoryTest, aPipeUnderTheNameHoldsNobodyUp) {
    const auto pipe = folder.filePath("pipe").toStdString();
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_TRUE(holdsApart([&] { return !UpdateMemory(pipe).checksAutomatically(); }));
}

TEST_F(UpdateMemoryTest, withoutAHomeNothingIsStored) {
    const auto before = QDir::current().entryList(QDir::AllEntries | QDir::Hidden);
    UpdateMemory memory("");
    memory.setSkippedVersion("2.0");
    EXPECT_EQ(memory.skippedVersion(), "2.0");
    EXPECT_EQ(QDir::current().entryList(QDir::AllEntries | QDir::Hidden), before);
}

} // namespace
} // namespace orrivane
