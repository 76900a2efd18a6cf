#pragma once

#include <linux/updater/NetworkReleaseSource.h>

#include <linux/qt/QtMainLoop.h>
#include <linux/updater/QtNetwork.h>
#include <tests/linux/updater/support/LoopbackServer.h>
#include <tests/linux/updater/support/TestReleases.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QEventLoop>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace orrivane {

inline const QString feedPath = "/feed.xml";
inline const QString packagePath = "/files/orrivane_2.0_amd64.deb";

/// A source that reads from a server of the test's own.
struct NetworkReleaseSourceTest : ::testing::Test {
    QTemporaryDir temporary;
    PackageFolder folder{temporary.filePath("updates").toStdString()};
    LoopbackServer server;
    QtMainLoop loop;
    QtNetwork network{loop};
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
        constexpr int bound = 20000; // ms
        const QDeadlineTimer deadline(bound);
        while (!holds() && !deadline.hasExpired())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
        return holds();
    }

    NetworkReleaseSource& made() {
        if (!source)
            source = std::make_unique<NetworkReleaseSource>(settings, folder, network, loop);
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
    QStringList left() const {
        return QDir(QString::fromStdString(folder.path()))
            .entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden);
    }
};

inline void expectSays(const std::string& sentence, const std::string& part) {
    EXPECT_NE(sentence.find(part), std::string::npos) << sentence;
}

} // namespace orrivane
