#include "support/Pump.h"

#include <linux/qt/QtUserDefaults.h>
#include <tests/support/contracts/UserDefaultsContract.h>

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdio>
#include <memory>

namespace orrivane {

namespace {

bool writeFile(const QString& path, const QByteArray& text) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
}

QByteArray readFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// As editors and other programs save: a new file takes the old one's place.
bool replaceFile(const QString& path, const QByteArray& text) {
    const auto fresh = path + ".new";
    return writeFile(fresh, text) &&
           std::rename(fresh.toUtf8().constData(), path.toUtf8().constData()) == 0;
}

struct QtDefaultsWorld {
    QTemporaryDir folder;
    QString path = folder.filePath("orrivane/orrivane.conf");
    std::unique_ptr<QtUserDefaults> body = std::make_unique<QtUserDefaults>(path);

    UserDefaults& defaults() { return *body; }
    void reopen() { body = std::make_unique<QtUserDefaults>(path); }
    bool changeElsewhere(std::string_view key, bool value) {
        return replaceFile(path, "[General]\n" + QByteArray(key.data(), qsizetype(key.size())) +
                                     (value ? "=true\n" : "=false\n"));
    }
    template <typename Condition>
    bool pumpUntil(Condition condition) {
        return orrivane::pumpUntil(condition);
    }
};

class QtUserDefaultsTest : public ::testing::Test {
  protected:
    QtDefaultsWorld world;
    static constexpr std::string_view key = "OrrivaneStripEnabled";
    static constexpr auto on = "[General]\nOrrivaneStripEnabled=true\n";
    static constexpr auto off = "[General]\nOrrivaneStripEnabled=false\n";

    bool reads(bool value) {
        return pumpUntil([&] { return world.defaults().boolForKey(key) == value; });
    }
};

} // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(Qt, UserDefaultsContract, QtDefaultsWorld);

TEST_F(QtUserDefaultsTest, aFallbackIsNotWritten) {
    world.defaults().registerDefault(key, true);
    EXPECT_TRUE(world.defaults().boolForKey(key));
    EXPECT_FALSE(QFile::exists(world.path));
}

TEST_F(QtUserDefaultsTest, aValueIsOnDiskWhenTheCallReturns) {
    world.defaults().setBool(key, true);
    EXPECT_TRUE(readFile(world.path).contains("OrrivaneStripEnabled=true"));
    world.defaults().setBool(key, false);
    EXPECT_TRUE(readFile(world.path).contains("OrrivaneStripEnabled=false"));
}

TEST_F(QtUserDefaultsTest, whatOthersStoredInTheFileStaysThere) {
    ASSERT_TRUE(writeFile(world.path, "[General]\nother=something else\n[Window]\nwidth=30\n"));
    world.reopen();
    world.defaults().setBool(key, true);
    const auto text = readFile(world.path);
    EXPECT_TRUE(text.contains("other=something else"));
    EXPECT_TRUE(text.contains("width=30"));
}

TEST_F(QtUserDefaultsTest, aFileReplacedAgainAndAgainIsNoticedEveryTime) {
    for (int round = 0; round < 3; ++round) {
        ASSERT_TRUE(replaceFile(world.path, on));
        EXPECT_TRUE(reads(true));
        ASSERT_TRUE(replaceFile(world.path, off));
        EXPECT_TRUE(reads(false));
    }
}

TEST_F(QtUserDefaultsTest, aFileWrittenInPlaceIsNoticedAlsoAfterAReplacement) {
    ASSERT_TRUE(replaceFile(world.path, off));
    ASSERT_TRUE(writeFile(world.path, on));
    EXPECT_TRUE(reads(true));
    ASSERT_TRUE(writeFile(world.path, off));
    EXPECT_TRUE(reads(false));
}

TEST_F(QtUserDefaultsTest, aFileThatIsDeletedLeavesTheFallback) {
    world.defaults().registerDefault(key, true);
    world.defaults().setBool(key, false);
    ASSERT_TRUE(QFile::remove(world.path));
    EXPECT_TRUE(reads(true));
}

TEST_F(QtUserDefaultsTest, anOwnChangeIsToldOnceAndAnEqualValueNotAtAll) {
    int told = 0;
    const auto observer = world.defaults().onChange([&] { ++told; });
    world.defaults().setBool(key, true);
    world.defaults().setBool(key, true);
    EXPECT_EQ(told, 1);
    // A foreign change comes after whatever the own one may have left behind.
    ASSERT_TRUE(replaceFile(world.path, off));
    ASSERT_TRUE(reads(false));
    EXPECT_EQ(told, 2);
}

TEST_F(QtUserDefaultsTest, aMalformedFileHoldsNothing) {
    const QByteArray valid = "OrrivaneStripEnabled=true\n";
    for (const auto& text : {valid + "no value here\n", valid + '\0' + "=\n"}) {
        ASSERT_TRUE(writeFile(world.path, text));
        for (int reading = 0; reading < 2; ++reading) {
            world.reopen();
            EXPECT_FALSE(world.defaults().boolForKey(key));
        }
    }
}

TEST_F(QtUserDefaultsTest, aValueStoredOverAMalformedFileCanBeReadAgain) {
    ASSERT_TRUE(writeFile(world.path, "OrrivaneMirrorOnExternal=true\nno value here\n"));
    world.reopen();
    world.defaults().setBool(key, true);
    world.reopen();
    EXPECT_TRUE(world.defaults().boolForKey(key));
    EXPECT_FALSE(world.defaults().boolForKey("OrrivaneMirrorOnExternal"));
}

TEST_F(QtUserDefaultsTest, aValueOfAnotherTypeCountsAsAbsent) {
    world.defaults().registerDefault(key, true);
    for (const QByteArray value : {"0", "no", "\"false, false\"", "@Invalid()", "2.5", ""}) {
        ASSERT_TRUE(writeFile(world.path, "[General]\nOrrivaneStripEnabled=" + value + "\n"));
        world.reopen();
        world.defaults().registerDefault(key, true);
        EXPECT_TRUE(world.defaults().boolForKey(key)) << value.toStdString();
    }
}

TEST_F(QtUserDefaultsTest, aValueThatCannotBeWrittenLivesOnInTheProgram) {
    ASSERT_TRUE(writeFile(world.folder.filePath("file"), "no folder"));
    QtUserDefaults defaults(world.folder.filePath("file/orrivane.conf"));
    defaults.setBool(key, true);
    EXPECT_TRUE(defaults.boolForKey(key));
}

TEST_F(QtUserDefaultsTest, theFileLiesInTheUsersConfigurationFolder) {
    qputenv("XDG_CONFIG_HOME", world.folder.path().toUtf8());
    EXPECT_EQ(QtUserDefaults::standardPath(), world.folder.filePath("orrivane/orrivane.conf"));
    qunsetenv("XDG_CONFIG_HOME");
}

} // namespace orrivane
