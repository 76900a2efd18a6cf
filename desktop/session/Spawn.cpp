#include <desktop/session/Spawn.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace orrivane::desktop {

namespace {

void becomeChild(const Launch& launch, pid_t parent) {
    setpgid(0, 0);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent)
        _exit(127);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    if (!launch.output.empty()) {
        const int file =
            open(launch.output.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
        dup2(file, STDOUT_FILENO);
        dup2(file, STDERR_FILENO);
        if (const int nothing = open("/dev/null", O_RDONLY | O_CLOEXEC); nothing >= 0)
            dup2(nothing, STDIN_FILENO);
    }
    if (launch.inherited >= 0)
        fcntl(launch.inherited, F_SETFD, 0);
}

bool reapOne() {
    int status = 0;
    return waitpid(-1, &status, WNOHANG) > 0;
}

std::vector<pid_t> ownChildren() {
    std::vector<pid_t> children;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator("/proc", error)) {
        const auto name = entry.path().filename().string();
        if (name.find_first_not_of("0123456789") != std::string::npos)
            continue;
        std::ifstream stat(entry.path() / "stat");
        std::string line;
        std::getline(stat, line);
        // The name in brackets may hold anything; the state and the parent come after it.
        const auto end = line.rfind(')');
        if (end != std::string::npos && end + 4 < line.size() &&
            std::atoi(line.c_str() + end + 4) == getpid())
            children.push_back(std::atoi(name.c_str()));
    }
    return children;
}

bool waitUntilChildless(std::chrono::milliseconds bound) {
    const auto until = std::chrono::steady_clock::now() + bound;
    while (std::chrono::steady_clock::now() < until) {
        while (reapOne()) {
        }
        if (errno == ECHILD)
            return true;
        poll(nullptr, 0, 10);
    }
    return false;
}

} // namespace

pid_t spawn(const Launch& launch) {
    std::vector<std::string> words;
    for (const auto& [name, value] : launch.environment)
        words.push_back(name + "=" + value);
    std::vector<char*> environment;
    for (auto& word : words)
        environment.push_back(word.data());
    environment.push_back(nullptr);
    auto arguments = launch.arguments;
    std::vector<char*> pointers;
    for (auto& argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);

    const pid_t parent = getpid();
    const pid_t child = fork();
    if (child == 0) {
        becomeChild(launch, parent);
        execvpe(pointers.front(), pointers.data(), environment.data());
        _exit(127);
    }
    if (child > 0)
        setpgid(child, child); // whichever of the two comes first
    return child;
}

void endAll(const std::vector<pid_t>& groups) {
    for (const auto group : groups)
        kill(-group, SIGTERM);
    if (waitUntilChildless(std::chrono::seconds(2)))
        return;
    // Grandchildren become our children when their parents end, so this comes to an end.
    for (int round = 0; round < 100; ++round) {
        for (const auto group : groups)
            kill(-group, SIGKILL);
        for (const auto child : ownChildren())
            kill(child, SIGKILL);
        if (waitUntilChildless(std::chrono::milliseconds(100)))
            return;
    }
}

} // namespace orrivane::desktop
