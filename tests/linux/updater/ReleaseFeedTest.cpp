#include <linux/updater/ReleaseFeed.h>

#include <tests/linux/updater/support/TestReleases.h>

#include <gtest/gtest.h>

namespace orrivane {
namespace {

constexpr const char* address = "https://example.org/orrivane_2.0_amd64.deb";

std::string document(const std::string& items) {
    return "<?xml version=\"1.0\"?><rss "
           "xmlns:sparkle=\"http://www.andymatuschak.org/xml-namespaces/sparkle\"><channel>" +
           items + "</channel></rss>";
}

void expectProblem(const std::string& xml, const std::string& problem) {
    const auto reading = readReleaseFeed(xml);
    ASSERT_TRUE(reading.problem) << xml;
    EXPECT_NE(reading.problem->find(problem), std::string::npos) << *reading.problem;
    EXPECT_TRUE(reading.entries.empty());
}

TEST(ReleaseFeed, whatIsPublishedIsReadBackFieldByField) {
    auto entry = release("2.0", address);
    entry.shortVersion = "2.0 \"Heron\"";
    entry.notes = "a < b && c\nsecond line";
    entry.notesFormat = "markdown";
    entry.notesLink = "https://example.org/notes?a=1&b=2";
    entry.channel = "beta";
    const auto reading = readReleaseFeed(feed({entry, release("1.0", address)}));
    EXPECT_EQ(reading.problem, std::nullopt);
    ASSERT_EQ(reading.entries.size(), 2U);
    EXPECT_EQ(reading.entries[0], entry);
    EXPECT_EQ(reading.entries[1], release("1.0", address));
}

TEST(ReleaseFeed, anEntryMayCarryItsVersionsInTheEnclosure) {
    const auto reading = readReleaseFeed(document(
        "<item><enclosure url='u' sparkle:version='7' sparkle:shortVersionString='0.7'/></item>"));
    ASSERT_EQ(reading.entries.size(), 1U);
    EXPECT_EQ(reading.entries[0].version, "7");
    EXPECT_EQ(reading.entries[0].displayVersion(), "0.7");
}

TEST(ReleaseFeed, ofSeveralFilesTheOneForThisSystemCounts) {
    const std::string mac = "<enclosure url='m' sparkle:os='macos'/>";
    const std::string ours = "<enclosure url='l' sparkle:os='linux'/>";
    for (const auto& files : {mac + ours, ours + mac}) {
        const auto reading = readReleaseFeed(document("<item>" + files + "</item>"));
        ASSERT_EQ(reading.entries.size(), 1U);
        EXPECT_EQ(reading.entries[0].address, "l");
        EXPECT_EQ(reading.entries[0].system, "linux");
    }
}

TEST(ReleaseFeed, elementsOfOtherNamespacesAreNobodysFields) {
    const auto reading = readReleaseFeed(
        document("<item><version>9</version><x:version xmlns:x='urn:x'>9</x:version>"
                 "<sparkle:version>1</sparkle:version><link><title>t</title></link></item>"
                 "<other><item/></other>"));
    ASSERT_EQ(reading.entries.size(), 1U);
    EXPECT_EQ(reading.entries[0].version, "1");
    EXPECT_EQ(reading.entries[0].title, "");
}

TEST(ReleaseFeed, textInsideOtherElementsIsLeftOut) {
    const auto reading =
        readReleaseFeed(document("<item><title>a<b>c</b>d<![CDATA[<e>]]></title></item>"));
    ASSERT_EQ(reading.entries.size(), 1U);
    EXPECT_EQ(reading.entries[0].title, "ad<e>");
}

TEST(ReleaseFeed, aFeedWithoutEntriesIsAFeed) {
    EXPECT_EQ(readReleaseFeed(document("")).problem, std::nullopt);
    EXPECT_TRUE(readReleaseFeed(document("")).entries.empty());
}

TEST(ReleaseFeed, malformedDocumentsAreRefusedAsAWhole) {
    expectProblem("", "not well-formed");
    expectProblem("not xml", "not well-formed");
    expectProblem(document("<item>"), "not well-formed");
    expectProblem(document("<item/>") + "<rss/>", "not well-formed");
    expectProblem(document("<item><title>\x01</title></item>"), "not well-formed");
    const auto whole = feed({release("2.0", address)});
    for (const auto length : {whole.size() / 4, whole.size() / 2, whole.size() - 8})
        expectProblem(whole.substr(0, length), "not well-formed");
}

TEST(ReleaseFeed, anotherKindOfDocumentIsNoFeed) {
    expectProblem("<html><body/></html>", "another kind of document");
    expectProblem("<rss xmlns='urn:x'/>", "another kind of document");
}

TEST(ReleaseFeed, entitiesOfItsOwnAreNeverExpanded) {
    std::string bomb = "<!DOCTYPE rss [<!ENTITY a0 'ha'>";
    for (int level = 1; level < 20; ++level) {
        const auto before = "&a" + std::to_string(level - 1) + ";";
        bomb += "<!ENTITY a" + std::to_string(level) + " '" + before + before + before + "'>";
    }
    expectProblem(bomb + "]><rss><channel><item><title>&a19;</title></item></channel></rss>",
                  "document type");
    expectProblem("<!DOCTYPE rss SYSTEM 'file:///etc/passwd'><rss/>", "document type");
    expectProblem(document("<item><title>&other;</title></item>"), "not well-formed");
}

TEST(ReleaseFeed, noTwoEntriesShareTheTextThatIsSigned) {
    ReleaseEntry left;
    left.title = "a\nversion 1\nb";
    ReleaseEntry right;
    right.title = "a";
    right.version = "b";
    EXPECT_NE(left.signedText(), right.signedText());
    const auto entry = release("2.0", address);
    using Field = std::string ReleaseEntry::*;
    const Field fields[] = {
        &ReleaseEntry::title,   &ReleaseEntry::version,     &ReleaseEntry::shortVersion,
        &ReleaseEntry::notes,   &ReleaseEntry::notesFormat, &ReleaseEntry::notesLink,
        &ReleaseEntry::channel, &ReleaseEntry::system,      &ReleaseEntry::address,
        &ReleaseEntry::length,  &ReleaseEntry::type,        &ReleaseEntry::fileSignature};
    for (const auto field : fields) {
        auto changed = entry;
        changed.*field += "x";
        EXPECT_NE(changed.signedText(), entry.signedText());
    }
}

} // namespace
} // namespace orrivane
