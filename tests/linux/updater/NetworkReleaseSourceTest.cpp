#include <linux/updater/NetworkReleaseSource.h>

#include <linux/qt/QtMainLoop.h>
#include <tests/linux/updater/support/LoopbackServer.h>
#include <tests/linux/updater/support/TestReleases.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace orrivane {
namespace {

constexpr int bound = 20000; // ms
const QString feedPath = "/feed.xml";
const QString packagePath = "/files/orrivane_2.0_amd64.deb";

struct NetworkReleaseSourceTest : ::testing::Test {
    QTemporaryDir temporary;
    PackageFolder folder{temporary.filePath("updates").toStdString()};
    LoopbackServer server;
    QtMainLoop loop;
    QByteArray package = QByteArray("\x7f"
                                    "ELF")
                             .repeated(100000);
    UpdateSettings settings;
    std::unique_ptr<NetworkReleaseSource> source;

    NetworkReleaseSourceTest() {
        settings.feed = server.address(feedPath).toStdString();
        settings.key = testKeys().publicKey;
        settings.running = "1.0";
        settings.policy = isSecureOrLoopbackAddress;
    }

    static bool pumpUntil(const std::function<bool()>& holds) {
        const QDeadlineTimer deadline(bound);
        while (!holds() && !deadline.hasExpired())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
        return holds();
    }

    NetworkReleaseSource& made() {
        if (!source)
            source = std::make_unique<NetworkReleaseSource>(settings, folder, loop);
        return *source;
    }

    ReleaseChoice check() {
        std::optional<ReleaseChoice> answer;
        const auto operation =
            made().check({}, [&](ReleaseChoice choice) { answer = std::move(choice); });
        EXPECT_FALSE(answer) << "never inside the call";
        EXPECT_TRUE(pumpUntil([&] { return answer.has_value(); }));
        return answer.value_or(ReleaseChoice{});
    }
    std::string problemOfCheck() {
        const auto choice = check();
        EXPECT_FALSE(choice.offer);
        return choice.problem.value_or("no problem");
    }

    ReleaseEntry entry() const {
        return release("2.0", server.address(packagePath).toStdString(), package.toStdString());
    }
    void publish(const ReleaseEntry& published) {
        server.serve(feedPath, "application/rss+xml; charset=utf-8",
                     QByteArray::fromStdString(feed({published})));
    }
    void servePackage() { server.serve(packagePath, "application/x-debian-package", package); }

    PackageResult download() {
        publish(entry());
        const auto choice = check();
        if (!choice.offer)
            return {{}, "no offer: " + choice.problem.value_or("")};
        std::optional<PackageResult> result;
        double last = 0;
        const auto operation = made().download(
            *choice.offer,
            [&](double part) {
                EXPECT_GE(part, last);
                last = part;
            },
            [&](PackageResult finished) { result = std::move(finished); });
        EXPECT_FALSE(result) << "never inside the call";
        EXPECT_TRUE(pumpUntil([&] { return result.has_value(); }));
        if (result && !result->problem) {
            EXPECT_EQ(last, 1);
        }
        return result.value_or(PackageResult{});
    }
    /// The problem of a download that leaves nothing behind.
    std::string problemOfDownload() {
        const auto result = download();
        EXPECT_EQ(result.path, "");
        EXPECT_TRUE(left().isEmpty()) << left().join(' ').toStdString();
        return result.problem.value_or("no problem");
    }
    /// A certificate for this machine that nobody else vouches for; false without the program that
    /// makes it.
    bool makeCertificate() const {
        return QProcess::execute("openssl", {"req", "-x509", "-newkey", "rsa:2048", "-nodes",
                                             "-days", "2", "-subj", "/CN=127.0.0.1", "-addext",
                                             "subjectAltName=IP:127.0.0.1", "-keyout", keyFile(),
                                             "-out", certificateFile()}) == 0;
    }
    QString keyFile() const { return temporary.filePath("key.pem"); }
    QString certificateFile() const { return temporary.filePath("certificate.pem"); }

    QStringList left() const {
        return QDir(QString::fromStdString(folder.path()))
            .entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden);
    }
};

void expectSays(const std::string& sentence, const std::string& part) {
    EXPECT_NE(sentence.find(part), std::string::npos) << sentence;
}

TEST_F(NetworkReleaseSourceTest, withoutAFeedOrAKeyItIsNotUsable) {
    EXPECT_TRUE(made().isUsable());
    settings.key = "rubbish";
    EXPECT_FALSE(NetworkReleaseSource(settings, folder, loop).isUsable());
    settings.key = testKeys().publicKey;
    settings.feed.clear();
    EXPECT_FALSE(NetworkReleaseSource(settings, folder, loop).isUsable());
}

TEST_F(NetworkReleaseSourceTest, aSignedReleaseIsOfferedDownloadedAndVerified) {
    servePackage();
    const auto result = download();
    EXPECT_EQ(result.problem, std::nullopt);
    ASSERT_EQ(result.path, folder.path() + "/orrivane_2.0_amd64.deb");
    QFile file(QString::fromStdString(result.path));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), package);
    EXPECT_EQ(left(), QStringList{"orrivane_2.0_amd64.deb"});
    for (const auto& request : server.requests()) {
        EXPECT_FALSE(request.toLower().contains("cookie:"));
        EXPECT_TRUE(request.contains("User-Agent: Orrivane\r\n"));
    }
}

TEST_F(NetworkReleaseSourceTest, aServerThatIsAwayIsSaidSo) {
    server.close();
    expectSays(problemOfCheck(), "does not answer. Check the connection and try again later.");
}

TEST_F(NetworkReleaseSourceTest, aPlainAddressElsewhereIsNotAsked) {
    settings.feed = "http://192.0.2.1/feed.xml";
    expectSays(problemOfCheck(), "is not a secure one");
    settings.feed = "file:///etc/passwd";
    source.reset();
    expectSays(problemOfCheck(), "is not a secure one");
}

TEST_F(NetworkReleaseSourceTest, aServerThatCannotProveItselfIsNotBelieved) {
    ASSERT_TRUE(makeCertificate());
    server.secure(certificateFile(), keyFile());
    settings.feed = server.address(feedPath).toStdString();
    settings.policy = isSecureAddress;
    publish(entry());
    expectSays(problemOfCheck(), "cannot prove that it is that server.");
}

TEST_F(NetworkReleaseSourceTest, aServerThatTheSystemTrustsIsRead) {
    ASSERT_TRUE(makeCertificate());
    server.secure(certificateFile(), keyFile());
    settings.feed = server.address(feedPath).toStdString();
    settings.policy = isSecureAddress;
    const auto before = QSslConfiguration::defaultConfiguration();
    auto trusting = before;
    trusting.addCaCertificates(QSslCertificate::fromPath(certificateFile()));
    QSslConfiguration::setDefaultConfiguration(trusting);
    publish(entry());
    EXPECT_TRUE(check().offer);
    // Once secure, it does not lead back to where anybody can listen.
    server.redirect(feedPath, "http://127.0.0.1:9/feed.xml");
    settings.policy = isSecureOrLoopbackAddress;
    source.reset();
    expectSays(problemOfCheck(), "leads to an address that is not secure.");
    QSslConfiguration::setDefaultConfiguration(before);
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

TEST_F(NetworkReleaseSourceTest, redirectionsAreFollowedAFewTimesOnly) {
    server.redirect(feedPath, "/moved.xml");
    server.serve("/moved.xml", "text/xml", QByteArray::fromStdString(feed({entry()})));
    EXPECT_TRUE(check().offer);
    server.redirect("/moved.xml", server.address(feedPath));
    expectSays(problemOfCheck(), "only leads from one address to the next.");
    server.redirect(feedPath, "http://192.0.2.1/feed.xml");
    expectSays(problemOfCheck(), "is not a secure one");
    server.redirect(feedPath, "file:///etc/passwd");
    expectSays(problemOfCheck(), "is not a secure one");
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

TEST_F(NetworkReleaseSourceTest, aFileWithAnotherSignatureIsDeleted) {
    auto changed = package;
    changed[1000] = 'x';
    server.serve(packagePath, "application/x-debian-package", changed);
    expectSays(problemOfDownload(), "not the one that Orrivane's developers signed");
}

TEST_F(NetworkReleaseSourceTest, aFileOfAnotherLengthIsRefused) {
    server.serve(packagePath, "application/x-debian-package", package + "x");
    expectSays(problemOfDownload(), "another length than the release feed says.");
    const QByteArray head = "HTTP/1.1 200 OK\r\nContent-Type: application/x-deb\r\n\r\n";
    server.answer(packagePath, {head + package + "x", true, false});
    expectSays(problemOfDownload(), "longer than the release feed says.");
    server.answer(packagePath, {head + package.left(5000), false, false});
    expectSays(problemOfDownload(), "ends before the length");
}

TEST_F(NetworkReleaseSourceTest, aFileThatBreaksOffIsRefused) {
    server.answer(packagePath,
                  {"HTTP/1.1 200 OK\r\nContent-Type: application/x-deb\r\nContent-Length: " +
                       QByteArray::number(package.size()) + "\r\n\r\n" + package.left(5000),
                   false, false});
    expectSays(problemOfDownload(), "ended the connection before everything had arrived.");
}

TEST_F(NetworkReleaseSourceTest, aFolderThatCannotBeWrittenIsNamed) {
    folder = PackageFolder("/proc/none/updates");
    servePackage();
    expectSays(problemOfDownload(), "/proc/none/updates");
}

TEST_F(NetworkReleaseSourceTest, whatIsCancelledLeavesNothingAndSaysNothing) {
    publish(entry());
    const auto choice = check();
    ASSERT_TRUE(choice.offer);
    server.answer(packagePath, {"HTTP/1.1 200 OK\r\nContent-Type: application/x-deb\r\n\r\n" +
                                    package.left(9000),
                                true, false});
    double arrived = 0;
    bool finished = false;
    auto operation = made().download(
        *choice.offer, [&](double part) { arrived = part; },
        [&](const PackageResult&) { finished = true; });
    ASSERT_TRUE(pumpUntil([&] { return arrived > 0; }));
    EXPECT_EQ(left(), QStringList{"orrivane_2.0_amd64.deb.part"});
    operation.reset();
    EXPECT_TRUE(left().isEmpty());
    EXPECT_TRUE(pumpUntil([&] { return server.requestsFor(packagePath) == 1; }));
    EXPECT_FALSE(finished);
}

TEST_F(NetworkReleaseSourceTest, theOperationMayEndInItsOwnCallback) {
    servePackage();
    publish(entry());
    const auto choice = check();
    ASSERT_TRUE(choice.offer);
    std::optional<PackageResult> result;
    std::unique_ptr<UpdateOperation> operation = made().download(
        *choice.offer, [](double) {},
        [&](PackageResult finished) {
            operation.reset();
            result = std::move(finished);
        });
    ASSERT_TRUE(pumpUntil([&] { return result.has_value(); }));
    EXPECT_EQ(result->problem, std::nullopt);
}

} // namespace
} // namespace orrivane
