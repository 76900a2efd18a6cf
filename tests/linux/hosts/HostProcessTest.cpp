#include <linux/hosts/HostProcess.h>
#include <linux/hosts/TrayHostKind.h>

#include <tests/linux/support/Apart.h>

#include "ChildProcess.h"
#include "TempDirectory.h"
#include "WaitFor.h"

#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

namespace orrivane {
namespace {

using e2e::ChildProcess;

struct HostProcessTest : testing::Test {
    e2e::TempDirectory folder;

    ChildProcess start(const std::string& script) {
        ChildProcess::Options options;
        options.arguments = {"sh", "-c", script, "shell", "two words"};
        options.environment = {{"PATH", "/usr/bin:/bin"}, {"EMPTY", ""}, {"NAME", "value"}};
        options.logFile = folder.path() + "/log";
        options.workingDirectory = folder.path();
        return ChildProcess(std::move(options));
    }
    void waitForLog(const ChildProcess& child) {
        ASSERT_TRUE(e2e::waitFor("it has begun", [&] { return !child.log().empty(); }));
    }
};

TEST_F(HostProcessTest, aProcessIsReadAsItIs) {
    const auto child = start("echo begun; while :; do sleep 1; done");
    waitForLog(child);
    const auto process = HostProcess::read(child.pid());
    ASSERT_TRUE(process);
    EXPECT_EQ(process->id, child.pid());
    EXPECT_EQ(process->name, "sh");
    ASSERT_EQ(process->arguments.size(), 5U);
    EXPECT_EQ(process->arguments[4], "two words");
    EXPECT_EQ(process->folder, std::filesystem::canonical(folder.path()));
    EXPECT_EQ(process->variable("NAME"), "value");
    EXPECT_EQ(process->variable("NAM"), std::nullopt);
    EXPECT_EQ(process->variable("EMPTY"), std::nullopt);
    EXPECT_EQ(process->absolute("rc"), process->folder + "/rc");
    EXPECT_EQ(process->absolute("/rc"), "/rc");
}

TEST_F(HostProcessTest, aProcessThatIsGoneIsAbsentAndGetsNoSignal) {
    auto child = start("echo begun; while :; do sleep 1; done");
    waitForLog(child);
    const auto process = HostProcess::read(child.pid());
    ASSERT_TRUE(process);
    child.kill();
    EXPECT_FALSE(HostProcess::read(process->id));
    EXPECT_FALSE(process->signal(SIGUSR1));
    EXPECT_FALSE(HostProcess::read(0));
    EXPECT_FALSE(HostProcess::read(-1));
}

TEST_F(HostProcessTest, aProcessThatEndsWhileItIsReadIsAbsent) {
    auto child = start("echo begun; while :; do sleep 1; done");
    waitForLog(child);
    // Opened while it ran, read when it does not: the kernel then answers with an error.
    const auto real = "/proc/" + std::to_string(child.pid()) + "/";
    const auto place = folder.path() + "/proc/" + std::to_string(child.pid());
    std::filesystem::create_directories(place);
    std::vector<int> files;
    for (const std::string name : {"comm", "cmdline", "environ"}) {
        files.push_back(open((real + name).c_str(), O_RDONLY | O_CLOEXEC));
        ASSERT_GE(files.back(), 0);
        std::filesystem::create_symlink("/proc/self/fd/" + std::to_string(files.back()),
                                        place + "/" + name);
    }
    ASSERT_TRUE(HostProcess::read(child.pid(), folder.path() + "/proc"));
    const auto id = child.pid();
    child.kill();
    EXPECT_TRUE(holdsApart([&] { return !HostProcess::read(id, folder.path() + "/proc"); }));
    for (const int file : files)
        close(file);
}

TEST_F(HostProcessTest, whatCannotBeReadOfAProcessIsEmpty) {
    const auto place = folder.path() + "/proc/7";
    e2e::writeFile(place + "/comm", "tint2\n");
    e2e::writeFile(place + "/cmdline", std::string("tint2\0", 6));
    std::filesystem::create_directories(place + "/environ");
    EXPECT_TRUE(holdsApart([&] {
        const auto process = HostProcess::read(7, folder.path() + "/proc");
        return process && process->environment.empty();
    }));
    std::filesystem::remove(place + "/cmdline");
    std::filesystem::create_directories(place + "/cmdline");
    EXPECT_TRUE(holdsApart([&] { return !HostProcess::read(7, folder.path() + "/proc"); }));
}

TEST_F(HostProcessTest, aSignalReachesAProcessThatHandlesIt) {
    auto child =
        start("trap 'echo reloaded; exit 3' USR1; echo begun; while :; do sleep 0.02; done");
    waitForLog(child);
    const auto process = HostProcess::read(child.pid());
    ASSERT_TRUE(process && process->signal(SIGUSR1));
    EXPECT_EQ(child.wait(std::chrono::seconds(10)), (e2e::ExitStatus{3, {}}));
}

TEST_F(HostProcessTest, aProcessThatTheSignalWouldEndIsSpared) {
    auto child = start("echo begun; while :; do sleep 1; done");
    waitForLog(child);
    const auto process = HostProcess::read(child.pid());
    ASSERT_TRUE(process);
    EXPECT_FALSE(process->signal(SIGUSR1));
    EXPECT_TRUE(child.isRunning());
}

TEST_F(HostProcessTest, aProcessThatDoesNotTellItsHandlersIsSpared) {
    auto child = start("trap 'exit 3' USR1; echo begun; while :; do sleep 0.02; done");
    waitForLog(child);
    const auto process = HostProcess::read(child.pid());
    ASSERT_TRUE(process);
    const auto place = folder.path() + "/proc/" + std::to_string(child.pid());
    e2e::writeFile(place + "/comm", "sh\n");
    e2e::writeFile(place + "/cmdline", "sh");
    std::filesystem::create_directories(place + "/status");
    EXPECT_TRUE(holdsApart([&] { return !process->signal(SIGUSR1, folder.path() + "/proc"); }));
    EXPECT_TRUE(child.isRunning());
}

TEST_F(HostProcessTest, anotherProgramUnderTheSameNumberGetsNoSignal) {
    auto child = start("trap 'exit 3' USR1; echo begun; while :; do sleep 0.02; done");
    waitForLog(child);
    auto process = HostProcess::read(child.pid());
    ASSERT_TRUE(process);
    process->name = "tint2";
    EXPECT_FALSE(process->signal(SIGUSR1));
    EXPECT_TRUE(child.isRunning());
}

HostProcess process(std::string name, std::vector<std::string> arguments) {
    return {7, std::move(name), std::move(arguments), "/", {}};
}

TEST(TrayHostKind, isToldByTheProcessOfTheTraysOwner) {
    const std::string library = "/usr/lib/x86_64-linux-gnu/xfce4/panel/plugins/libsystray.so";
    using Choice = TrayHostChoice;
    EXPECT_EQ(trayHostOf(std::nullopt), Choice{});
    EXPECT_EQ(trayHostOf(process("tint2", {"tint2"})), Choice{TrayHostKind::tint2});
    const std::string wrapper = "/usr/lib/x86_64-linux-gnu/xfce4/panel/wrapper-2.0";
    const auto plugin = [&](std::vector<std::string> arguments) {
        return trayHostOf(process("panel-12-systra", std::move(arguments)));
    };
    EXPECT_EQ(plugin({wrapper, library, "12", "4194311", "systray"}),
              (Choice{TrayHostKind::xfcePanel, 12}));
    EXPECT_EQ(plugin({wrapper, library}), Choice{});
    EXPECT_EQ(plugin({wrapper, library, "x"}), Choice{});
    EXPECT_EQ(plugin({wrapper, library, "-2"}), Choice{});
    EXPECT_EQ(plugin({wrapper, "/usr/lib/xfce4/panel/plugins/libclock.so", "3"}), Choice{});
    EXPECT_EQ(plugin({wrapper, "/tmp/libsystray.so", "3"}), Choice{});
    EXPECT_EQ(plugin({"/usr/bin/other", library, "3"}), Choice{});
    for (const char* other : {"trayer", "mate-panel", "lxpanel", "ControlCenter", "tint2conf", ""})
        EXPECT_EQ(trayHostOf(process(other, {other})), Choice{}) << other;
}

} // namespace
} // namespace orrivane
