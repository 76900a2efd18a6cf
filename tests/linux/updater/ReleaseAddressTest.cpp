#include <tests/linux/updater/support/NetworkReleaseFixture.h>

#include <QProcess>
#include <QSslCertificate>
#include <QSslConfiguration>

namespace orrivane {
namespace {

/// A server that speaks TLS.
struct SecureReleaseSourceTest : NetworkReleaseSourceTest {
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
};

TEST_F(NetworkReleaseSourceTest, aPlainAddressElsewhereIsNotAsked) {
    settings.feed = "http://192.0.2.1/feed.xml";
    expectSays(problemOfCheck(), "is not a secure one");
    settings.feed = "file:///etc/passwd";
    source.reset();
    expectSays(problemOfCheck(), "is not a secure one");
}

TEST_F(SecureReleaseSourceTest, aServerThatCannotProveItselfIsNotBelieved) {
    ASSERT_TRUE(makeCertificate());
    server.secure(certificateFile(), keyFile());
    settings.feed = server.address(feedPath).toStdString();
    settings.policy = isSecureAddress;
    publish(entry());
    expectSays(problemOfCheck(), "cannot prove that it is that server.");
}

TEST_F(SecureReleaseSourceTest, aServerThatTheSystemTrustsIsRead) {
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

} // namespace
} // namespace orrivane
