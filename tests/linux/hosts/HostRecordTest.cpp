#include <linux/hosts/HostRecord.h>

#include "TempDirectory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sys/stat.h>

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
    record.restore(std::nullopt);
    EXPECT_FALSE(std::filesystem::exists(path));
    record.restore(fields);
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

TEST_F(HostRecordTest, withoutAHomeNothingIsKept) {
    const HostRecord homeless("");
    EXPECT_FALSE(homeless.write(fields));
    EXPECT_FALSE(homeless.read());
    homeless.restore(std::nullopt);
}

TEST_F(HostRecordTest, onlyASmallRegularFileIsRead) {
    EXPECT_FALSE(readSmallFile(folder.path()));
    EXPECT_FALSE(readSmallFile(folder.path() + "/none"));
    const auto pipe = folder.path() + "/pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_FALSE(readSmallFile(pipe));
    writeFile(folder.path() + "/large", std::string((1 << 20) + 1, 'x'));
    EXPECT_FALSE(readSmallFile(folder.path() + "/large"));
    writeFile(folder.path() + "/empty", "");
    EXPECT_EQ(readSmallFile(folder.path() + "/empty"), "");
}

} // namespace
} // namespace orrivane
