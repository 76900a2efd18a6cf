#include <desktop/bar/OrderFile.h>

#include "TempDirectory.h"

#include <gtest/gtest.h>

namespace orrivane::desktop {
namespace {

using e2e::readFile;
using e2e::TempDirectory;
using e2e::writeFile;
using Order = std::vector<ItemKey>;

class OrderFileTest : public testing::Test {
  protected:
    TempDirectory folder;
    std::string path = folder.path() + "/order";
    OrderFile file{path};
};

TEST_F(OrderFileTest, whereThereIsNoneTheOrderIsEmpty) {
    EXPECT_EQ(file.read(), Order{});
}

TEST_F(OrderFileTest, whatIsWrittenIsReadAgain) {
    const Order order{{"Volume Control", 0}, {"", 0}, {"", 1}, {" leading", 3}, {"Ünï-код", 0}};
    ASSERT_TRUE(file.write(order));
    EXPECT_EQ(file.read(), order);
    ASSERT_TRUE(file.write({{"one", 0}}));
    EXPECT_EQ(file.read(), (Order{{"one", 0}}));
}

TEST_F(OrderFileTest, lineBreaksInANameDoNotMakeMoreLines) {
    ASSERT_TRUE(file.write({{"two\nlines\rand\r\nmore", 0}}));
    EXPECT_EQ(file.read(), (Order{{OrderFile::keptName("two\nlines\rand\r\nmore"), 0}}));
}

TEST_F(OrderFileTest, linesThatAreNoItemArePassedOver) {
    writeFile(path, "0 first\n\nnonsense\n-1 negative\n99999999999 huge\n7\n2 last");
    EXPECT_EQ(file.read(), (Order{{"first", 0}, {"last", 2}}));
}

TEST_F(OrderFileTest, noMoreIsReadThanARowRemembers) {
    std::string text;
    for (int i = 0; i < 2000; ++i)
        text += "0 app" + std::to_string(i) + '\n';
    writeFile(path, text);
    EXPECT_EQ(file.read().size(), ItemRow::mostRemembered);
}

TEST_F(OrderFileTest, whatCannotBeWrittenLeavesTheOldOrder) {
    EXPECT_FALSE(OrderFile(folder.path() + "/missing/order").write({{"one", 0}}));
    EXPECT_FALSE(OrderFile("").write({{"one", 0}}));
    EXPECT_EQ(OrderFile("").read(), Order{});
}

} // namespace
} // namespace orrivane::desktop
