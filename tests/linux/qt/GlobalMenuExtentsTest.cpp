#include "support/PrivateBus.h"

#include <linux/qt/GlobalMenuExtents.h>
#include <tests/desktop/support/RequiredHere.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QFile>

#include <gtest/gtest.h>

#include <csignal>
#include <optional>

namespace orrivane {

namespace {

// Roles of the accessibility protocol.
constexpr int frame = 23;
constexpr int menu = 33;
constexpr int menuBar = 34;
constexpr int panel = 39;
constexpr int table = 55;
constexpr int application = 75;

constexpr PixelRect band{0, 0, 1512, 37};
constexpr int bound = 10'000; // milliseconds

class TreeText {
  public:
    TreeText& add(const char* path, const char* parent, int role, PixelRect at = {},
                  bool showing = true) {
        text_ += QStringLiteral("%1 %2 %3 %4 %5 %6 %7 %8\n")
                     .arg(path, parent)
                     .arg(role)
                     .arg(at.x)
                     .arg(at.y)
                     .arg(at.width)
                     .arg(at.height)
                     .arg(showing ? 1 : 0)
                     .toUtf8();
        return *this;
    }
    [[nodiscard]] const QByteArray& text() const { return text_; }

  private:
    QByteArray text_;
};

// A panel that shows two menus in the band, the last of which ends at 160.
TreeText panelWithMenus() {
    TreeText tree;
    tree.add("/app", "-", application)
        .add("/app/panel", "/app", panel, {0, 0, 1512, 37})
        .add("/app/bar", "/app/panel", menuBar, {10, 2, 400, 33})
        .add("/app/file", "/app/bar", menu, {10, 2, 60, 33})
        .add("/app/edit", "/app/bar", menu, {70, 2, 90, 33});
    return tree;
}

class GlobalMenuExtentsTest : public ::testing::Test {
  protected:
    PrivateBus session;
    PrivateBus accessibility;
    QTemporaryDir folder;
    QProcess applicationProcess;
    double now = 1000; // seconds

    void SetUp() override {
        if (session.address().isEmpty() || accessibility.address().isEmpty())
            GTEST_SKIP() << e2e::reasonToSkip("dbus-daemon could not be started");
    }
    void TearDown() override {
        signalApplication(SIGCONT);
        applicationProcess.kill();
        applicationProcess.waitForFinished(bound);
    }

    bool offer(const TreeText& tree) {
        const auto path = folder.filePath("tree");
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(tree.text()) < 0)
            return false;
        file.close();
        applicationProcess.start(ORRIVANE_MOCK_TREE,
                                 {session.address(), accessibility.address(), path});
        return applicationProcess.waitForReadyRead(bound) &&
               applicationProcess.readLine().startsWith("ready");
    }
    void signalApplication(int number) {
        if (applicationProcess.processId() != 0)
            ::kill(process(), number);
    }
    [[nodiscard]] pid_t process() const {
        return static_cast<pid_t>(applicationProcess.processId());
    }
    /// While the loop runs, until the bound.
    bool becomes(GlobalMenuExtents& extents, int edge) {
        QDeadlineTimer limit(bound);
        while (extents.rightEdge(process(), band) != edge && !limit.hasExpired())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 10);
        return !limit.hasExpired();
    }
    GlobalMenuExtents makeExtents() {
        return GlobalMenuExtents(session.connect(), [this] { return now; });
    }
};

} // namespace

TEST_F(GlobalMenuExtentsTest, tellsWhereTheLastShownMenuEnds) {
    auto tree = panelWithMenus();
    tree.add("/app/hidden", "/app/bar", menu, {160, 2, 80, 33}, false);
    ASSERT_TRUE(offer(tree));
    auto extents = GlobalMenuExtents(session.connect());
    EXPECT_EQ(extents.rightEdge(process(), band), 160);
    EXPECT_EQ(extents.rightEdge(process(), band), 160);
}

TEST_F(GlobalMenuExtentsTest, findsABarDeepInTheTree) {
    TreeText tree;
    tree.add("/a", "-", application);
    std::string parent = "/a";
    for (int depth = 0; depth < 5; ++depth) {
        const auto path = parent + "/b";
        tree.add(path.c_str(), parent.c_str(), panel);
        parent = path;
    }
    tree.add("/bar", parent.c_str(), menuBar, {0, 0, 300, 30})
        .add("/menu", "/bar", menu, {0, 0, 44, 30});
    ASSERT_TRUE(offer(tree));
    EXPECT_EQ(makeExtents().rightEdge(process(), band), 44);
}

TEST_F(GlobalMenuExtentsTest, aBarInAWindowBelowTheBandIsNoGlobalOne) {
    TreeText tree;
    tree.add("/app", "-", application)
        .add("/app/window", "/app", frame, {0, 20, 800, 600})
        .add("/app/bar", "/app/window", menuBar, {0, 30, 800, 25})
        .add("/app/file", "/app/bar", menu, {0, 30, 60, 25});
    ASSERT_TRUE(offer(tree));
    EXPECT_EQ(makeExtents().rightEdge(process(), band), std::nullopt);
}

TEST_F(GlobalMenuExtentsTest, aBarOfTheBandCountsBesideOneOfAWindow) {
    auto tree = panelWithMenus();
    tree.add("/app/window", "/app", frame, {0, 100, 800, 600})
        .add("/app/other", "/app/window", menuBar, {0, 120, 800, 25})
        .add("/app/wide", "/app/other", menu, {0, 120, 700, 25});
    ASSERT_TRUE(offer(tree));
    EXPECT_EQ(makeExtents().rightEdge(process(), band), 160);
}

TEST_F(GlobalMenuExtentsTest, aBarWithoutAShownMenuTellsNothing) {
    TreeText tree;
    tree.add("/app", "-", application)
        .add("/app/bar", "/app", menuBar, {0, 0, 300, 30})
        .add("/app/file", "/app/bar", menu, {0, 0, 60, 30}, false);
    ASSERT_TRUE(offer(tree));
    EXPECT_EQ(makeExtents().rightEdge(process(), band), std::nullopt);
}

TEST_F(GlobalMenuExtentsTest, contentIsNotWalkedThrough) {
    TreeText tree;
    tree.add("/app", "-", application)
        .add("/app/table", "/app", table, {0, 0, 800, 600})
        .add("/app/bar", "/app/table", menuBar, {0, 0, 300, 30})
        .add("/app/file", "/app/bar", menu, {0, 0, 60, 30});
    ASSERT_TRUE(offer(tree));
    EXPECT_EQ(makeExtents().rightEdge(process(), band), std::nullopt);
}

TEST_F(GlobalMenuExtentsTest, theMenusOfAnotherProcessAreNotTaken) {
    ASSERT_TRUE(offer(panelWithMenus()));
    EXPECT_EQ(makeExtents().rightEdge(::getpid(), band), std::nullopt);
}

TEST_F(GlobalMenuExtentsTest, withoutAnAccessibilityBusThereIsNoMenuAndNoSilence) {
    auto extents = makeExtents();
    EXPECT_EQ(extents.rightEdge(::getpid(), band), std::nullopt);
    // The bus that is there by now is found as soon as its coming is known: its absence was an
    // answer.
    ASSERT_TRUE(offer(panelWithMenus()));
    EXPECT_TRUE(becomes(extents, 160));
}

TEST_F(GlobalMenuExtentsTest, aBusThatWasAbsentIsNotAskedForAgain) {
    auto extents = makeExtents();
    ASSERT_EQ(extents.rightEdge(::getpid(), band), std::nullopt);
    // A question would find nobody who answers, and silence would follow.
    ASSERT_EQ(::kill(static_cast<pid_t>(session.process()), SIGSTOP), 0);
    EXPECT_EQ(extents.rightEdge(::getpid(), band), std::nullopt);
    ASSERT_EQ(::kill(static_cast<pid_t>(session.process()), SIGCONT), 0);
    ASSERT_TRUE(offer(panelWithMenus()));
    EXPECT_TRUE(becomes(extents, 160));
}

TEST_F(GlobalMenuExtentsTest, aHungApplicationIsLeftAloneForSomeSeconds) {
    ASSERT_TRUE(offer(panelWithMenus()));
    auto extents = makeExtents();
    ASSERT_EQ(extents.rightEdge(process(), band), 160);
    signalApplication(SIGSTOP);
    EXPECT_EQ(extents.rightEdge(process(), band), std::nullopt);
    signalApplication(SIGCONT);
    now += 4.9;
    EXPECT_EQ(extents.rightEdge(process(), band), std::nullopt);
    now += 0.2;
    EXPECT_EQ(extents.rightEdge(process(), band), 160);
}

TEST_F(GlobalMenuExtentsTest, aHungBusIsGivenUp) {
    ASSERT_TRUE(offer(panelWithMenus()));
    ASSERT_EQ(::kill(static_cast<pid_t>(accessibility.process()), SIGSTOP), 0);
    auto extents = makeExtents();
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(extents.rightEdge(process(), band), std::nullopt);
    // Far below what the bus library itself would wait for.
    EXPECT_LT(timer.elapsed(), bound);
    ASSERT_EQ(::kill(static_cast<pid_t>(accessibility.process()), SIGCONT), 0);
    EXPECT_EQ(extents.rightEdge(process(), band), std::nullopt);
    now += 5.1;
    EXPECT_EQ(extents.rightEdge(process(), band), 160);
}

TEST_F(GlobalMenuExtentsTest, anApplicationThatStartsAnewIsFound) {
    ASSERT_TRUE(offer(panelWithMenus()));
    auto extents = makeExtents();
    ASSERT_EQ(extents.rightEdge(process(), band), 160);
    signalApplication(SIGKILL);
    ASSERT_TRUE(applicationProcess.waitForFinished(bound));
    EXPECT_EQ(extents.rightEdge(process(), band), std::nullopt);
    ASSERT_TRUE(offer(panelWithMenus()));
    now += 5.1;
    EXPECT_EQ(extents.rightEdge(process(), band), 160);
}

} // namespace orrivane
