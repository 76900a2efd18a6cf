#include "ChildProcess.h"

#include "TempDirectory.h"
#include "WaitFor.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <set>
#include <sstream>
#include <stdexcept>
#include <utility>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace orrivane::e2e {

namespace {

std::set<pid_t>& ownedProcesses() {
    static std::set<pid_t> pids;
    return pids;
}

std::string findProgram(const std::string& program) {
    if (program.find('/') != std::string::npos) {
        return program;
    }
    const char* path = std::getenv("PATH");
    std::istringstream folders(path != nullptr ? path : "/usr/bin:/bin");
    for (std::string folder; std::getline(folders, folder, ':');) {
        const std::string candidate = folder + "/" + program;
        if (access(candidate.c_str(), X_OK) == 0) {
            return candidate;
        }
    }
    return program;
}

std::vector<char*> pointers(std::vector<std::string>& strings) {
    std::vector<char*> result;
    for (std::string& string : strings) {
        result.push_back(string.data());
    }
    result.push_back(nullptr);
    return result;
}

struct Image {
    std::string path;
    std::vector<char*> arguments;
    std::vector<char*> environment;
    std::string directory;
    int log = -1;
    pid_t parent = -1;
};

// Runs between fork and exec: system calls only.
[[noreturn]] void becomeProgram(const Image& image, const std::vector<int>& keepOpen) {
    setpgid(0, 0);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != image.parent) {
        _exit(127);
    }
    const int input = open("/dev/null", O_RDONLY);
    dup2(input, STDIN_FILENO);
    dup2(image.log, STDOUT_FILENO);
    dup2(image.log, STDERR_FILENO);
    for (int descriptor : keepOpen) {
        fcntl(descriptor, F_SETFD, 0);
    }
    if (chdir(image.directory.c_str()) != 0) {
        _exit(127);
    }
    execve(image.path.c_str(), image.arguments.data(), image.environment.data());
    _exit(127);
}

ExitStatus decode(int raw) {
    ExitStatus status;
    if (WIFEXITED(raw)) {
        status.code = WEXITSTATUS(raw);
    } else {
        status.signal = WTERMSIG(raw);
    }
    return status;
}

} // namespace

ChildProcess::ChildProcess(Options options)
    : name_(options.arguments.at(0))
    , logFile_(options.logFile) {
    std::vector<std::string> variables;
    for (const auto& [key, value] : options.environment) {
        variables.push_back(key + "=" + value);
    }
    Image image;
    image.path = findProgram(options.arguments.front());
    image.arguments = pointers(options.arguments);
    image.environment = pointers(variables);
    image.directory = options.workingDirectory.empty() ? "/" : options.workingDirectory;
    image.parent = getpid();
    image.log = open(logFile_.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    if (image.log < 0) {
        throw std::runtime_error("cannot write " + logFile_ + ": " + std::strerror(errno));
    }
    const pid_t child = fork();
    if (child == 0) {
        becomeProgram(image, options.keepOpen);
    }
    const int failure = errno;
    close(image.log);
    if (child < 0) {
        throw std::runtime_error("cannot start " + name_ + ": " + std::strerror(failure));
    }
    // Done on both sides of the fork, so that the group exists whoever runs first.
    setpgid(child, child);
    pid_ = child;
    ownedProcesses().insert(child);
}

ChildProcess::~ChildProcess() {
    kill();
}

ChildProcess::ChildProcess(ChildProcess&& other) noexcept
    : pid_(std::exchange(other.pid_, -1))
    , name_(std::move(other.name_))
    , logFile_(std::move(other.logFile_))
    , status_(std::move(other.status_))
    , groupEnded_(other.groupEnded_) {}

ChildProcess& ChildProcess::operator=(ChildProcess&& other) noexcept {
    if (this != &other) {
        kill();
        pid_ = std::exchange(other.pid_, -1);
        name_ = std::move(other.name_);
        logFile_ = std::move(other.logFile_);
        status_ = std::move(other.status_);
        groupEnded_ = other.groupEnded_;
    }
    return *this;
}

std::string ChildProcess::log() const {
    return readFile(logFile_);
}

bool ChildProcess::reap() {
    if (pid_ < 0 || status_) {
        return true;
    }
    int raw = 0;
    const pid_t found = waitpid(pid_, &raw, WNOHANG);
    if (found == pid_) {
        status_ = decode(raw);
        ownedProcesses().erase(pid_);
    }
    return status_.has_value();
}

bool ChildProcess::isRunning() {
    return !reap();
}

std::optional<ExitStatus> ChildProcess::exitStatus() {
    reap();
    return status_;
}

std::optional<ExitStatus> ChildProcess::wait(std::chrono::milliseconds bound) {
    waitFor(name_ + " ends", [this] { return reap(); }, bound);
    return status_;
}

void ChildProcess::signalGroup(int number) const {
    if (pid_ > 0) {
        ::kill(-pid_, number);
    }
}

void ChildProcess::stop() {
    signalGroup(SIGSTOP);
    siginfo_t info{};
    waitid(P_PID, static_cast<id_t>(pid_), &info, WSTOPPED | WEXITED | WNOWAIT);
}

void ChildProcess::resume() {
    signalGroup(SIGCONT);
}

void ChildProcess::interrupt() {
    if (isRunning()) {
        ::kill(pid_, SIGINT);
    }
}

std::optional<ExitStatus> ChildProcess::terminate(std::chrono::milliseconds bound) {
    if (isRunning()) {
        ::kill(pid_, SIGTERM);
    }
    return wait(bound);
}

void ChildProcess::kill() {
    // Once only: later the number may belong to somebody else's group.
    if (pid_ < 0 || std::exchange(groupEnded_, true)) {
        return;
    }
    signalGroup(SIGKILL);
    int raw = 0;
    while (!status_ && waitpid(pid_, &raw, 0) == pid_) {
        status_ = decode(raw);
    }
    ownedProcesses().erase(pid_);
}

bool isInstalled(const std::string& program) {
    return access(findProgram(program).c_str(), X_OK) == 0;
}

void adoptOrphans() {
    prctl(PR_SET_CHILD_SUBREAPER, 1);
}

int endOrphans() {
    const std::string self = std::to_string(getpid());
    std::set<pid_t> ended;
    // Killing one may leave its own children here: look again until none is left.
    for (bool found = true; found;) {
        found = false;
        std::istringstream children(readFile("/proc/self/task/" + self + "/children"));
        for (pid_t child = 0; children >> child;) {
            if (!ownedProcesses().contains(child)) {
                ::kill(child, SIGKILL);
                waitpid(child, nullptr, 0);
                ended.insert(child);
                found = true;
            }
        }
    }
    return static_cast<int>(ended.size());
}

} // namespace orrivane::e2e
