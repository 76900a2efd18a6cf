#include <tests/linux/updater/support/NetworkReleaseFixture.h>

#include <Orrivane/CommandLine.h>
#include <linux/updater/LoadedNetwork.h>

#include <QFile>

namespace orrivane {
namespace {

/// The source as the program has it: its network comes from the module.
struct LoadedNetworkTest : NetworkReleaseSourceTest {
    std::string module = ORRIVANE_TEST_MODULE;
    std::string version{CommandLine::version()};
    std::unique_ptr<LoadedNetwork> loaded;

    ~LoadedNetworkTest() override { source.reset(); } // before the network that it uses
    void load() {
        source.reset();
        loaded = std::make_unique<LoadedNetwork>(module, version, loop);
        source = std::make_unique<NetworkReleaseSource>(settings, folder, *loaded, loop);
    }
};

TEST_F(LoadedNetworkTest, theModuleOfTheProgramFetchesFeedAndPackage) {
    load();
    servePackage();
    const auto result = download();
    EXPECT_FALSE(result.problem) << *result.problem;
    QFile file(QString::fromStdString(result.path));
    ASSERT_TRUE(file.open(QFile::ReadOnly));
    EXPECT_EQ(file.readAll(), package);
}

TEST_F(LoadedNetworkTest, aModuleThatIsNotThereIsNamedAndTriedAgain) {
    module = temporary.filePath("not-there.so").toStdString();
    load();
    publish(entry());
    expectSays(problemOfCheck(), "cannot be loaded (" + module + "), perhaps");
    ASSERT_TRUE(QFile::copy(ORRIVANE_TEST_MODULE, QString::fromStdString(module)));
    EXPECT_TRUE(check().offer);
}

TEST_F(LoadedNetworkTest, aFileThatIsNoModuleIsNamed) {
    module = temporary.filePath("text.so").toStdString();
    QFile file(QString::fromStdString(module));
    ASSERT_TRUE(file.open(QFile::WriteOnly) && file.write("no module") > 0);
    file.close();
    load();
    expectSays(problemOfCheck(), "cannot be loaded (" + module + ")");
}

TEST_F(LoadedNetworkTest, aModuleOfAnotherVersionIsNotUsed) {
    version += ".1";
    load();
    publish(entry());
    expectSays(problemOfCheck(), "was changed while it ran. Quit it and start it again.");
}

TEST_F(LoadedNetworkTest, aRefusalThatIsCancelledSaysNothing) {
    module = "/nowhere.so";
    load();
    bool told = false;
    auto operation = source->check({}, [&](const ReleaseChoice&) { told = true; });
    operation.reset();
    bool later = false;
    const auto timer = loop.wakeUp(0.05, [&] { later = true; });
    EXPECT_TRUE(pumpUntil([&] { return later; }));
    EXPECT_FALSE(told);
}

} // namespace
} // namespace orrivane
