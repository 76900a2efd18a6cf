#include <linux/hosts/HostRecord.h>

#include <tests/linux/support/Apart.h>

#include "TempDirectory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace orrivane {
namespace {

using e2e::readFile;
using e2e::writeFile;

struct HostRecordTest : testing::Test {
    e2e::TempDirectory folder;
    std::string path = folder.path() + "/hosts/tint2";
    HostRecord record{path};
    HostRecord::Fields fields{
        {"own", "a = b % \r\x01"}, {"file", "/home/\xc3\xa9/\n x"}, {"no", ""}};
};

TEST_F(HostRecordTest, anyBytesComeBack) {
    EXPECT_FALSE(record.read());
    ASSERT_TRUE(record.write(fields));
    EXPECT_EQ(record.read(), fields);
}

TEST_F(HostRecordTest, restoringNothingLeavesNoFile) {
    ASSERT_TRUE(record.write(fields));
    EXPECT_TRUE(record.restore(std::nullopt));
    EXPECT_FALSE(std::filesystem::exists(path));
    EXPECT_TRUE(record.restore(std::nullopt));
    EXPECT_TRUE(record.restore(fields));
    EXPECT_EQ(record.read(), fields);
}

TEST_F(HostRecordTest, aPartOfARecordIsNone) {
    const auto whole = HostRecord::text(fields);
    EXPECT_EQ(HostRecord::parse(whole), fields);
    for (std::size_t length = 0; length + 1 < whole.size(); ++length)
        EXPECT_FALSE(HostRecord::parse(whole.substr(0, length))) << whole.substr(0, length);
}

TEST_F(HostRecordTest, nonsenseIsNone) {
    for (const char* text :
         {"orrivane host record 2\nend\n", "orrivane host record 1\nno sign\nend\n",
          "orrivane host record 1\na=%\nend\n", "orrivane host record 1\na=%g0\nend\n",
          "orrivane host record 1\nend\nmore\n", "\n\n\n"})
        EXPECT_FALSE(HostRecord::parse(text)) << text;
}

TEST_F(HostRecordTest, aDamagedRecordIsPutAsideAndNotLost) {
    writeFile(path, "orrivane host record 1\nown=systray_pad");
    EXPECT_FALSE(record.read());
    ASSERT_TRUE(record.write(fields));
    EXPECT_EQ(record.read(), fields);
    EXPECT_EQ(readFile(path + ".damaged"), "orrivane host record 1\nown=systray_pad");
}

TEST_F(HostRecordTest, aRecordThatMayNotBeReadIsPutAsideAndNotLost) {
    using std::filesystem::perms;
    ASSERT_TRUE(record.write(fields));
    const auto before = readFile(path);
    std::filesystem::permissions(folder.path(), perms(0755));
    std::filesystem::permissions(std::filesystem::path(path).parent_path(), perms(0777));
    std::filesystem::permissions(path, perms::none);
    EXPECT_TRUE(holdsForAnOrdinaryUser([&] { return bool(record.write({{"own", "new"}})); }));
    std::filesystem::permissions(path + ".damaged", perms(0600));
    EXPECT_EQ(readFile(path + ".damaged"), before);
}

TEST_F(HostRecordTest, withoutAHomeNothingIsKept) {
    const HostRecord homeless("");
    EXPECT_FALSE(homeless.write(fields));
    EXPECT_FALSE(homeless.read());
    EXPECT_TRUE(homeless.restore(std::nullopt));
    EXPECT_NE(homeless.write(fields).text().find("home"), std::string::npos);
}

TEST_F(HostRecordTest, aRecordThatCannotBePutBackIsSaidSo) {
    std::filesystem::create_directories(path + "/inTheWay");
    const auto removed = record.restore(std::nullopt);
    EXPECT_FALSE(removed);
    EXPECT_NE(removed.text().find(path), std::string::npos) << removed.text();
    EXPECT_TRUE(std::filesystem::exists(path + "/inTheWay"));
    writeFile(folder.path() + "/file", "");
    EXPECT_FALSE(HostRecord(folder.path() + "/file/record").restore(fields));
}

} // namespace
} // namespace orrivane
