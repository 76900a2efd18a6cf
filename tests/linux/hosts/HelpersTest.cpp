#include <linux/hosts/BackgroundQueue.h>
#include <linux/hosts/BoundedProgram.h>
#include <linux/hosts/RestartLauncher.h>
#include <linux/hosts/SpacingWish.h>

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <limits>

namespace orrivane {
namespace {

using std::chrono::milliseconds;

TEST(BoundedProgram, givesWhatTheProgramWroteAndHowItEnded) {
    const auto result =
        BoundedProgram::run({"sh", "-c", "echo $LC_ALL; echo no >&2; exit 3"}, milliseconds(10000));
    ASSERT_TRUE(result);
    EXPECT_EQ(result->output, "C\n");
    EXPECT_EQ(result->status, 3);
    const auto killed = BoundedProgram::run({"sh", "-c", "kill -9 $$"}, milliseconds(10000));
    ASSERT_TRUE(killed);
    EXPECT_EQ(killed->status, 128 + 9);
}

TEST(BoundedProgram, aProgramThatDoesNotEndIsEnded) {
    const auto begun = std::chrono::steady_clock::now();
    EXPECT_FALSE(BoundedProgram::run({"sleep", "60"}, milliseconds(100)));
    // Also one that has closed its output and goes on.
    EXPECT_FALSE(BoundedProgram::run({"sh", "-c", "exec >&-; exec sleep 60"}, milliseconds(100)));
    EXPECT_LT(std::chrono::steady_clock::now() - begun, std::chrono::seconds(30));
}

TEST(BoundedProgram, aProgramThatIsNotThereOrWritesWithoutEndFails) {
    const auto missing = BoundedProgram::run({"orrivane-no-such-program"}, milliseconds(10000));
    EXPECT_TRUE(!missing || missing->status == 127);
    EXPECT_FALSE(BoundedProgram::run({"yes"}, milliseconds(30000)));
    EXPECT_FALSE(BoundedProgram::run({}, milliseconds(10)));
}

TEST(BackgroundQueue, worksInOrderOnAnotherThread) {
    BackgroundQueue queue;
    std::vector<int> order;
    std::promise<std::thread::id> done;
    for (int i = 0; i < 5; ++i)
        queue.post([&order, i] { order.push_back(i); });
    queue.post([&] { done.set_value(std::this_thread::get_id()); });
    EXPECT_NE(done.get_future().get(), std::this_thread::get_id());
    EXPECT_EQ(order, (std::vector<int>{0, 1, 2, 3, 4}));
}

TEST(BackgroundQueue, finishesWhatItBegan) {
    std::promise<void> begun;
    std::promise<void> goOn;
    bool finished = false;
    std::thread helper;
    {
        BackgroundQueue queue;
        queue.post([&] {
            begun.set_value();
            goOn.get_future().wait();
            finished = true;
        });
        begun.get_future().wait();
        helper = std::thread([&] { goOn.set_value(); });
    }
    helper.join();
    EXPECT_TRUE(finished);
}

struct Launches : ProcessLauncher {
    std::vector<std::string> paths;
    bool launch(const std::string& path, const std::vector<std::string>&) override {
        paths.push_back(path);
        return false;
    }
};

TEST(RestartLauncher, launchesEverythingAndTellsOfTheMenuBarsRestartAlone) {
    Launches launches;
    int restarts = 0;
    RestartLauncher launcher(launches, [&] { ++restarts; });
    EXPECT_FALSE(launcher.launch("/usr/bin/killall", {"Other"}));
    launcher.launch("/usr/bin/open", {"ControlCenter"});
    launcher.launch("/elsewhere/killall", {"ControlCenter"});
    launcher.launch("/usr/bin/killall", {"ControlCenter", "more"});
    EXPECT_EQ(restarts, 0);
    SqueezeEngine::restartControlCenter(launcher);
    EXPECT_EQ(restarts, 1);
    EXPECT_EQ(launches.paths,
              (std::vector<std::string>{"/usr/bin/killall", "/usr/bin/open", "/elsewhere/killall",
                                        "/usr/bin/killall", "/usr/bin/killall"}));
}

TEST(SpacingWish, isTheDifferenceToTheDefaultSpacingInPixels) {
    const auto wanted = [](std::optional<std::int64_t> spacing, double scale) {
        return wantedReduction({spacing, {}}, scale);
    };
    EXPECT_EQ(wanted(std::nullopt, 1), std::nullopt);
    EXPECT_EQ(wanted(16, 1), 0);
    EXPECT_EQ(wanted(6, 1), 10);
    EXPECT_EQ(wanted(6, 1.5), 15);
    EXPECT_EQ(wanted(20, 2), -8);
    using Limits = std::numeric_limits<std::int64_t>;
    EXPECT_EQ(wanted(Limits::max(), 1), -9984);
    EXPECT_EQ(wanted(Limits::min(), 1e300), 1000000);
}

} // namespace
} // namespace orrivane
