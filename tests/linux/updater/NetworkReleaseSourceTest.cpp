#include <tests/linux/updater/support/NetworkReleaseFixture.h>

namespace orrivane {
namespace {

TEST_F(NetworkReleaseSourceTest, withoutAFeedOrAKeyItIsNotUsable) {
    EXPECT_TRUE(made().isUsable());
    settings.key = "rubbish";
    EXPECT_FALSE(NetworkReleaseSource(settings, folder, network, loop).isUsable());
    settings.key = testKeys().publicKey;
    settings.feed.clear();
    EXPECT_FALSE(NetworkReleaseSource(settings, folder, network, loop).isUsable());
}

TEST_F(NetworkReleaseSourceTest, aServerThatIsAwayIsSaidSo) {
    server.close();
    expectSays(problemOfCheck(), "does not answer. Check the connection and try again later.");
}

TEST_F(NetworkReleaseSourceTest, anErrorOfTheServerIsNamed) {
    expectSays(problemOfCheck(), "answered with the error 404.");
}

TEST_F(NetworkReleaseSourceTest, anotherMediaTypeIsRefused) {
    server.serve(feedPath, "text/html", QByteArray::fromStdString(feed({entry()})));
    expectSays(problemOfCheck(), "sent something else (text/html).");
    server.serve(packagePath, "text/html", package);
    expectSays(problemOfDownload(), "sent something else (text/html).");
}

TEST_F(NetworkReleaseSourceTest, aFeedWithoutEndIsCutOff) {
    server.answer(feedPath, {"HTTP/1.1 200 OK\r\nContent-Type: text/xml\r\n\r\n" +
                                 QByteArray(NetworkReleaseSource::largestFeed + 1, ' '),
                             true, false});
    expectSays(problemOfCheck(), "sends more than is taken.");
    server.answer(feedPath,
                  {"HTTP/1.1 200 OK\r\nContent-Type: text/xml\r\nContent-Length: 99999999\r\n\r\n",
                   true, false});
    expectSays(problemOfCheck(), "offers more than is taken.");
}

TEST_F(NetworkReleaseSourceTest, aPackedFeedIsNotUnpacked) {
    server.answer(feedPath, {"HTTP/1.1 200 OK\r\nContent-Type: text/xml\r\nContent-Encoding: "
                             "gzip\r\nContent-Length: 4\r\n\r\nabcd",
                             false, false});
    expectSays(problemOfCheck(), "packed");
}

TEST_F(NetworkReleaseSourceTest, aServerThatFallsSilentIsGivenUp) {
    settings.idleTime = 0.2;
    server.answer(feedPath,
                  {"HTTP/1.1 200 OK\r\nContent-Type: text/xml\r\n\r\n<rss>", true, false});
    expectSays(problemOfCheck(), "has stopped sending.");
    server.answer(feedPath, {"", true, false});
    expectSays(problemOfCheck(), "has stopped sending.");
}

TEST_F(NetworkReleaseSourceTest, aServerThatDripsForEverIsGivenUp) {
    settings.feedTime = 0.4;
    server.answer(feedPath, {"HTTP/1.1 200 OK\r\nContent-Type: text/xml\r\n\r\n<rss>", true, true});
    expectSays(problemOfCheck(), "takes too long.");
}

TEST_F(NetworkReleaseSourceTest, aMalformedFeedOrOneWithEntitiesIsRefused) {
    server.serve(feedPath, "text/xml", "<rss><channel>");
    expectSays(problemOfCheck(), "not well-formed");
    server.serve(feedPath, "text/xml", "<!DOCTYPE a [<!ENTITY b 'c'>]><rss>&b;</rss>");
    expectSays(problemOfCheck(), "document type");
}

TEST_F(NetworkReleaseSourceTest, anEntryOfSomebodyElseAndADowngradeAreRefused) {
    publish(release("2.0", server.address(packagePath).toStdString(), "package", foreignKeys()));
    expectSays(problemOfCheck(), "not signed by Orrivane");
    auto downgrade = release("0.5", server.address(packagePath).toStdString());
    downgrade.version = "9.0";
    publish(downgrade);
    expectSays(problemOfCheck(), "not signed by Orrivane");
    publish(release("0.5", server.address(packagePath).toStdString()));
    EXPECT_FALSE(check().offer);
    EXPECT_EQ(check().problem, std::nullopt);
}

} // namespace
} // namespace orrivane
