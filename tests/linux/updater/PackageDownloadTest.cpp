#include <tests/linux/updater/support/NetworkReleaseFixture.h>

#include <QFile>

namespace orrivane {
namespace {

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

TEST_F(NetworkReleaseSourceTest, tricksInTheFilesNameLeadNowhere) {
    for (const char* name : {"..%2f..%2forrivane.deb", "%2e%2e/%2e%2e/orrivane.deb", "a%00.deb",
                             ".hidden.deb", "orrivane.sh"}) {
        server.serve("/files/" + QString(name), "application/x-debian-package", package);
        publish(
            release("2.0", server.address("/files/").toStdString() + name, package.toStdString()));
        expectSays(problemOfCheck(), "does not have the name of a Debian package");
    }
    EXPECT_TRUE(left().isEmpty());
    EXPECT_EQ(
        QDir(temporary.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden),
        QStringList{});
}

TEST_F(NetworkReleaseSourceTest, aHugeFileIsRefused) {
    publish(resigned(entry(), [](auto& each) { each.length = "1099511627776"; }));
    expectSays(problemOfCheck(), "larger than 512 MiB");
    servePackage();
    server.answer(packagePath,
                  {"HTTP/1.1 200 OK\r\nContent-Type: application/x-deb\r\nContent-Length: "
                   "1099511627776\r\n\r\n",
                   true, false});
    expectSays(problemOfDownload(), "another length than the release feed says.");
}

TEST_F(NetworkReleaseSourceTest, aSlowFileAndOneThatIsOnlyLedToLeaveNothingBehind) {
    settings.idleTime = 0.3;
    const QByteArray head = "HTTP/1.1 200 OK\r\nContent-Type: application/x-deb\r\n\r\n";
    server.answer(packagePath, {head + package.left(5000), true, false});
    expectSays(problemOfDownload(), "has stopped sending.");
    settings.packageTime = 0.5;
    source.reset();
    server.answer(packagePath, {head, true, true});
    expectSays(problemOfDownload(), "takes too long.");
    server.redirect(packagePath, server.address(packagePath));
    expectSays(problemOfDownload(), "only leads from one address to the next.");
    server.redirect(packagePath, "file:///etc/passwd");
    expectSays(problemOfDownload(), "is not a secure one");
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
