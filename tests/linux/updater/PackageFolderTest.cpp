#include <linux/updater/PackageFolder.h>

#include <tests/linux/support/Apart.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orrivane {
namespace {

struct PackageFolderTest : ::testing::Test {
    QTemporaryDir temporary;
    PackageFolder folder{temporary.filePath("cache/updates").toStdString()};

    QStringList names() const {
        return QDir(QString::fromStdString(folder.path()))
            .entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden);
    }
    void leave(const char* name) {
        QFile file(QString::fromStdString(folder.path()) + '/' + name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
};

TEST_F(PackageFolderTest, aKeptPackageStaysUnderItsNameForThisUserAlone) {
    auto file = folder.create("a.deb");
    ASSERT_EQ(file->open(), std::nullopt);
    ASSERT_EQ(file->write("con"), std::nullopt);
    ASSERT_EQ(file->write("tents"), std::nullopt);
    EXPECT_TRUE(file->contentsAre([](std::span<const unsigned char> bytes) {
        return std::string(bytes.begin(), bytes.end()) == "contents";
    }));
    EXPECT_EQ(names(), QStringList{"a.deb.part"});
    ASSERT_EQ(file->keep(), std::nullopt);
    EXPECT_EQ(file->path(), folder.path() + "/a.deb");
    file.reset();
    EXPECT_EQ(names(), QStringList{"a.deb"});
    struct stat status = {};
    ASSERT_EQ(stat(folder.path().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0700U);
}

TEST_F(PackageFolderTest, nothingStaysOfAPackageThatIsNotKept) {
    auto file = folder.create("a.deb");
    ASSERT_EQ(file->open(), std::nullopt);
    ASSERT_EQ(file->write("contents"), std::nullopt);
    file.reset();
    EXPECT_TRUE(names().isEmpty());
}

TEST_F(PackageFolderTest, anEmptyFileHasNoContents) {
    const auto file = folder.create("a.deb");
    ASSERT_EQ(file->open(), std::nullopt);
    EXPECT_FALSE(file->contentsAre([](auto) { return true; }));
}

TEST_F(PackageFolderTest, whatEarlierUpdatesLeftGoesAndNothingElse) {
    ASSERT_EQ(folder.create("a.deb")->open(), std::nullopt);
    leave("old.deb");
    leave("half.deb.part");
    leave("notes.txt");
    folder.clear();
    EXPECT_EQ(names(), QStringList{"notes.txt"});
}

TEST_F(PackageFolderTest, aLinkInPlaceOfTheFolderIsRefused) {
    ASSERT_TRUE(QDir(temporary.path()).mkpath("cache"));
    ASSERT_TRUE(QDir(temporary.path()).mkpath("elsewhere"));
    ASSERT_TRUE(QFile::link(temporary.filePath("elsewhere"), temporary.filePath("cache/updates")));
    const auto problem = folder.create("a.deb")->open();
    ASSERT_TRUE(problem);
    EXPECT_NE(problem->find("does not belong to you alone"), std::string::npos) << *problem;
    EXPECT_TRUE(QDir(temporary.filePath("elsewhere")).isEmpty());
}

TEST_F(PackageFolderTest, aFolderThatCannotBeMadeIsNamed) {
    const auto problem = PackageFolder("/proc/none/updates").create("a.deb")->open();
    ASSERT_TRUE(problem);
    EXPECT_NE(problem->find("/proc/none/updates"), std::string::npos) << *problem;
}

TEST_F(PackageFolderTest, withoutAHomeThereIsOneSentenceAndNoPackage) {
    const PackageFolder homeless("");
    homeless.clear();
    const auto problem = homeless.create("a.deb")->open();
    ASSERT_TRUE(problem);
    EXPECT_EQ(*problem, "There is no home folder to keep the package in; set HOME and try again.");
}

TEST_F(PackageFolderTest, nobodyElsesFolderStandsInForAHome) {
    if (getuid() != 0)
        GTEST_SKIP() << "only root can become a user whom the system does not know";
    EXPECT_TRUE(holdsApart([] {
        constexpr uid_t unknown = 54321;
        unsetenv("XDG_CACHE_HOME");
        setenv("HOME", "relative", 1);
        return setuid(unknown) == 0 && PackageFolder::ofUser().path().empty();
    }));
}

TEST_F(PackageFolderTest, aFullDiskIsSaidSo) {
    // The device that is always full stands in for the disk.
    ASSERT_TRUE(QDir().mkpath(QString::fromStdString(folder.path())));
    auto file = folder.create("a.deb");
    ASSERT_EQ(file->open(), std::nullopt);
    const int full = ::open("/dev/full", O_WRONLY);
    ASSERT_GE(full, 0);
    struct stat part = {};
    ASSERT_EQ(stat((folder.path() + "/a.deb.part").c_str(), &part), 0);
    // Found by its number, since the file keeps its descriptor to itself.
    for (int descriptor = 3; descriptor < 256; ++descriptor) {
        struct stat status = {};
        if (fstat(descriptor, &status) == 0 && status.st_ino == part.st_ino &&
            status.st_dev == part.st_dev) {
            ASSERT_EQ(dup2(full, descriptor), descriptor);
        }
    }
    close(full);
    const auto problem = file->write("contents");
    ASSERT_TRUE(problem);
    EXPECT_NE(problem->find("No space left"), std::string::npos) << *problem;
    EXPECT_NE(problem->find("Make room"), std::string::npos) << *problem;
    file.reset();
    EXPECT_TRUE(names().isEmpty());
}

} // namespace
} // namespace orrivane
