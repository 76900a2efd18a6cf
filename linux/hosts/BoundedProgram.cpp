#include <linux/hosts/BoundedProgram.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <string_view>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ; // NOLINT: POSIX declares it nowhere

namespace orrivane {

namespace {

using Clock = std::chrono::steady_clock;
constexpr std::size_t mostOutput = 1 << 20;

std::vector<char*> pointersTo(std::vector<std::string>& words) {
    std::vector<char*> pointers;
    for (auto& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    return pointers;
}

std::vector<std::string> plainEnvironment() {
    std::vector<std::string> result{"LC_ALL=C"};
    for (char** each = environ; *each; ++each)
        if (!std::string_view(*each).starts_with("LC_ALL="))
            result.emplace_back(*each);
    return result;
}

pid_t spawn(std::vector<std::string> words, int output) {
    auto variables = plainEnvironment();
    posix_spawn_file_actions_t files;
    posix_spawnattr_t attributes;
    posix_spawn_file_actions_init(&files);
    posix_spawnattr_init(&attributes);
    posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&files, output, STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&files, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    sigset_t none;
    sigset_t all;
    sigemptyset(&none);
    sigfillset(&all);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setsigdefault(&attributes, &all);
    posix_spawnattr_setflags(&attributes,
                             static_cast<short>(POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF));
    pid_t child = 0;
    const auto arguments = pointersTo(words);
    const auto names = pointersTo(variables);
    const int error = posix_spawnp(&child, words.front().c_str(), &files, &attributes,
                                   arguments.data(), names.data());
    posix_spawn_file_actions_destroy(&files);
    posix_spawnattr_destroy(&attributes);
    return error == 0 ? child : -1;
}

// Whether `file` became readable, or was closed at its other end, before `until`.
bool waitFor(int file, Clock::time_point until) {
    for (;;) {
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(until - Clock::now()).count();
        pollfd entry{file, POLLIN, 0};
        const int ready = poll(&entry, 1, left > 0 ? static_cast<int>(left) : 0);
        if (ready > 0 || (ready < 0 && errno != EINTR) || left <= 0)
            return ready > 0;
    }
}

bool readAll(int file, std::string& output, Clock::time_point until) {
    std::array<char, 4096> part{};
    while (waitFor(file, until)) {
        const auto count = read(file, part.data(), part.size());
        if (count == 0)
            return true;
        if (count < 0 && errno != EINTR)
            return false;
        if (count > 0)
            output.append(part.data(), static_cast<std::size_t>(count));
        if (output.size() > mostOutput)
            return false;
    }
    return false;
}

} // namespace

std::optional<BoundedProgram::Result> BoundedProgram::run(const std::vector<std::string>& words,
                                                          std::chrono::milliseconds bound) {
    const auto until = Clock::now() + bound;
    std::array<int, 2> ends{};
    if (words.empty() || pipe2(ends.data(), O_CLOEXEC) != 0)
        return std::nullopt;
    const auto child = spawn(words, ends[1]);
    close(ends[1]);
    const int process = child > 0 ? static_cast<int>(syscall(SYS_pidfd_open, child, 0)) : -1;
    Result result;
    // A closed output is not yet an end.
    const bool ended =
        process >= 0 && readAll(ends[0], result.output, until) && waitFor(process, until);
    close(ends[0]);
    if (process >= 0)
        close(process);
    if (child < 0)
        return std::nullopt;
    if (!ended)
        kill(child, SIGKILL);
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    if (!ended)
        return std::nullopt;
    constexpr int bySignal = 128;
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : bySignal + WTERMSIG(status);
    return result;
}

} // namespace orrivane
