#import <macos/appkit/TaskLauncher.h>

#import "support/Pump.h"
#import "support/TempFolder.h"

#include <tests/support/contracts/ProcessLauncherContract.h>

#include <sys/wait.h>

#include <cerrno>
#include <fstream>

namespace orrivane {
namespace {

struct TaskWorld {
    TempFolder folder;
    TaskLauncher body;

    ProcessLauncher& launcher() { return body; }
    std::string program() { return script("program", 0); }
    std::string failingProgram() { return script("failing", 1); }
    [[nodiscard]] std::string missingProgram() const { return (folder.path() / "none").string(); }
    [[nodiscard]] std::optional<std::vector<std::string>> argumentsSeen() const {
        std::ifstream file(folder.path() / "seen");
        if (!file)
            return std::nullopt;
        std::vector<std::string> words;
        for (std::string word; std::getline(file, word, '\0');)
            words.push_back(word);
        return words;
    }
    template <typename Condition>
    bool pumpUntil(Condition condition) {
        return orrivane::pumpUntil(condition);
    }

  private:
    // The list takes its name when it is complete.
    [[nodiscard]] std::string script(const std::string& name, int status) const {
        const auto path = folder.path() / name;
        std::ofstream(path) << "#!/bin/sh\ncd \"${0%/*}\" || exit\n"
                               "for word; do printf '%s\\0' \"$word\"; done > seen.new\n"
                               "mv seen.new seen\nexit "
                            << status << "\n";
        std::filesystem::permissions(path, std::filesystem::perms(0700));
        return path.string();
    }
};
INSTANTIATE_TYPED_TEST_SUITE_P(Task, ProcessLauncherContract, TaskWorld);

TEST(TaskLauncher, leavesNoZombieBehind) {
    TaskLauncher launcher;
    ASSERT_TRUE(launcher.launch("/usr/bin/true", {}));
    ASSERT_TRUE(launcher.launch("/usr/bin/false", {}));
    EXPECT_TRUE(pumpUntil([] {
        siginfo_t info = {};
        return ::waitid(P_ALL, 0, &info, WEXITED | WNOHANG | WNOWAIT) == -1 && errno == ECHILD;
    }));
}

} // namespace
} // namespace orrivane
