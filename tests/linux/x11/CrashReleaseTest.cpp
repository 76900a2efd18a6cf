#include <linux/x11/CrashRelease.h>

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <exception>
#include <functional>
#include <optional>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace orrivane::x11 {
namespace {

using Bytes = std::array<unsigned char, 3>;

constexpr Bytes requests{1, 2, 3};
const std::string asBytes("\x01\x02\x03");

struct End {
    std::string written;
    int status = 0;
};

/// What a process that does this writes, given where to, and how it ends.
End endOf(const std::function<void(int)>& deed) {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0)
        return {};
    const auto child = fork();
    if (child == 0) {
        const rlimit noCore{0, 0};
        setrlimit(RLIMIT_CORE, &noCore);
        deed(ends[1]);
        _exit(0);
    }
    close(ends[1]);
    End end;
    std::array<char, 64> chunk{};
    for (ssize_t count = 0; (count = read(ends[0], chunk.data(), chunk.size())) > 0;)
        end.written.append(chunk.data(), static_cast<std::size_t>(count));
    close(ends[0]);
    waitpid(child, &end.status, 0);
    return end;
}

bool endedBy(const End& end, int signal) {
    return WIFSIGNALED(end.status) && WTERMSIG(end.status) == signal;
}

TEST(CrashRelease, writesAndThenLetsTheSignalEndTheProgram) {
    for (const int number :
         {SIGABRT, SIGALRM, SIGBUS, SIGFPE, SIGILL, SIGIO, SIGPIPE, SIGPROF, SIGPWR, SIGQUIT,
          SIGSEGV, SIGSTKFLT, SIGSYS, SIGTRAP, SIGUSR1, SIGUSR2, SIGVTALRM, SIGXCPU, SIGXFSZ}) {
        const auto end = endOf([number](int target) {
            std::signal(number, SIG_DFL);
            const CrashRelease held(target, requests);
            kill(getpid(), number);
        });
        EXPECT_EQ(end.written, asBytes) << number;
        EXPECT_TRUE(endedBy(end, number)) << number;
    }
}

TEST(CrashRelease, writesAlsoWhenAnErrorThatNobodyCatchesEndsTheProgram) {
    const auto end = endOf([](int target) {
        std::signal(SIGABRT, SIG_DFL);
        const CrashRelease held(target, requests);
        std::terminate();
    });
    EXPECT_EQ(end.written, asBytes);
    EXPECT_TRUE(endedBy(end, SIGABRT));
}

TEST(CrashRelease, writesBeforeTheProgramIsStoppedAtItsTerminal) {
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    const auto child = fork();
    if (child == 0) {
        // In a session without a terminal nobody would stop.
        setpgid(0, 0);
        std::signal(SIGTSTP, SIG_DFL);
        const CrashRelease held(ends[1], requests);
        raise(SIGTSTP);
        _exit(7);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, WUNTRACED), child);
    EXPECT_TRUE(WIFSTOPPED(status));
    Bytes written{};
    EXPECT_EQ(read(ends[0], written.data(), written.size()), ssize_t(written.size()));
    EXPECT_EQ(written, requests);
    kill(child, SIGCONT);
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 7);
    close(ends[0]);
    close(ends[1]);
}

TEST(CrashRelease, leavesASignalThatTheProgramIgnoresOrHandlesToIt) {
    const auto end = endOf([](int target) {
        std::signal(SIGPIPE, SIG_IGN);
        std::signal(SIGUSR1, [](int) {});
        const CrashRelease held(target, requests);
        raise(SIGPIPE);
        raise(SIGUSR1);
    });
    EXPECT_EQ(end.written, "");
    EXPECT_TRUE(WIFEXITED(end.status));
}

TEST(CrashRelease, writesNothingOnceItIsGone) {
    const auto end = endOf([](int target) {
        std::signal(SIGSEGV, SIG_DFL);
        {
            const CrashRelease held(target, requests);
        }
        kill(getpid(), SIGSEGV);
    });
    EXPECT_EQ(end.written, "");
    EXPECT_TRUE(endedBy(end, SIGSEGV));
}

TEST(CrashRelease, writesWhatTheNewestSays) {
    const auto end = endOf([](int target) {
        std::signal(SIGSEGV, SIG_DFL);
        const CrashRelease older(target, requests);
        const CrashRelease newer(target, Bytes{4, 5, 6});
        kill(getpid(), SIGSEGV);
    });
    EXPECT_EQ(end.written, "\x04\x05\x06");
}

TEST(CrashRelease, givesUpOnAServerThatTakesNothing) {
    const auto end = endOf([](int) {
        std::signal(SIGSEGV, SIG_DFL);
        std::array<int, 2> full{};
        if (pipe(full.data()) != 0)
            _exit(1);
        const std::string plenty(4096, 'x');
        alarm(20);
        std::optional<CrashRelease> held(std::in_place, full[1], requests);
        // As many as a pipe holds.
        for (int page = 0; page < 16; ++page)
            if (write(full[1], plenty.data(), plenty.size()) < 0)
                _exit(2);
        kill(getpid(), SIGSEGV);
    });
    EXPECT_TRUE(endedBy(end, SIGSEGV));
}

} // namespace
} // namespace orrivane::x11
