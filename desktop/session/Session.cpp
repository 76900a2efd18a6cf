#include <desktop/session/Session.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <poll.h>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/signalfd.h>
#include <sys/wait.h>
#include <unistd.h>

namespace orrivane::desktop {

namespace {

namespace fs = std::filesystem;

constexpr int readyBound = 20; // seconds
constexpr int secondScreenWidth = 1280;
constexpr int secondScreenHeight = 800;

double now() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

int plainStatus(int status) {
    constexpr int bySignal = 128; // as shells say it
    return WIFEXITED(status) ? WEXITSTATUS(status) : bySignal + WTERMSIG(status);
}

} // namespace

Session::Session(SessionOptions options)
    : options_(std::move(options))
    , home_(options_)
    , environment_(home_.environment()) {
    // Whoever loses its parent comes to us, so that nobody is left at the end.
    prctl(PR_SET_CHILD_SUBREAPER, 1);
    sigset_t heard;
    sigemptyset(&heard);
    for (const int signal : {SIGCHLD, SIGTERM, SIGINT, SIGHUP})
        sigaddset(&heard, signal);
    sigprocmask(SIG_BLOCK, &heard, nullptr);
    signals_ = signalfd(-1, &heard, SFD_NONBLOCK | SFD_CLOEXEC);
    if (signals_ < 0)
        throw std::runtime_error("the system gives no signal descriptor");
    std::signal(SIGPIPE, SIG_IGN);
}

Session::~Session() {
    stage_.reset();
    std::vector<pid_t> groups;
    for (const auto& child : children_)
        if (child.process > 0)
            groups.push_back(child.process);
    endAll(groups);
    close(signals_);
}

// In the build tree each part has a folder; installed, all stand in one.
std::string Session::sibling(const std::string& part, const std::string& program) const {
    const auto here = fs::read_symlink("/proc/self/exe").parent_path();
    for (const auto& path : {here / program, here.parent_path() / part / program})
        if (access(path.c_str(), X_OK) == 0)
            return path.string();
    throw std::runtime_error(program + " is missing beside orrivane-desktop; build or install all "
                                       "of the desktop");
}

Session::Child& Session::start(std::string name, Role role, std::vector<std::string> arguments) {
    Child child{.name = std::move(name),
                .role = role,
                .launch = {.arguments = std::move(arguments),
                           .environment = environment_,
                           .output = {},
                           .inherited = -1},
                .process = -1,
                .policy = {}};
    if (role != Role::guest)
        child.launch.output = home_.logOf(child.name);
    children_.push_back(std::move(child));
    startAgain(children_.back());
    return children_.back();
}

void Session::startAgain(Child& child) {
    child.process = spawn(child.launch);
    if (child.process < 0)
        throw std::runtime_error("no further process can be started");
}

std::string Session::readLine(int descriptor, const std::string& what) {
    std::string line;
    const double until = now() + 10;
    while (now() < until) {
        pollfd waiting{descriptor, POLLIN, 0};
        poll(&waiting, 1, 100);
        char c = 0;
        while (waiting.revents != 0 && read(descriptor, &c, 1) == 1) {
            if (c == '\n')
                return line;
            line += c;
        }
        reap();
        if (result_)
            break;
    }
    throw std::runtime_error(what + " did not start: " + home_.lastWordsOf(what));
}

void Session::startServer() {
    const char* outside = std::getenv("DISPLAY");
    const bool nested = !options_.headless && outside && *outside;
    const bool second = options_.screens == 2;
    const int width = options_.panel.width + (second ? secondScreenWidth : 0);
    const int height =
        second ? std::max(options_.panel.height, secondScreenHeight) : options_.panel.height;
    const auto size = std::to_string(width) + "x" + std::to_string(height);
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe can be made");
    fcntl(ends[0], F_SETFL, O_NONBLOCK);
    const std::string name = nested ? "Xephyr" : "Xvfb";
    std::vector<std::string> arguments{name,        "-displayfd", std::to_string(ends[1]),
                                       "-nolisten", "tcp",        "-noreset"};
    if (nested)
        arguments.insert(arguments.end(), {"-screen", size, "-title", "Orrivane desktop"});
    else
        arguments.insert(arguments.end(), {"-screen", "0", size + "x24"});
    Child child{.name = name,
                .role = Role::essential,
                .launch = {.arguments = std::move(arguments),
                           .environment = environment_,
                           .output = home_.logOf(name),
                           .inherited = ends[1]},
                .process = -1,
                .policy = {}};
    children_.push_back(std::move(child));
    startAgain(children_.back());
    close(ends[1]);
    display_ = ":" + readLine(ends[0], name);
    close(ends[0]);
    environment_["DISPLAY"] = display_;
    stage_ = std::make_unique<Stage>(display_);
    stage_->setCutout(options_.panel);
    if (second)
        stage_->addSecondScreen(options_.panel, secondScreenWidth, secondScreenHeight);
}

void Session::startBus() {
    const auto address = "unix:path=" + home_.busSocket();
    environment_["DBUS_SESSION_BUS_ADDRESS"] = address;
    start("dbus-daemon", Role::essential,
          {"dbus-daemon", "--session", "--nofork", "--nopidfile", "--address=" + address});
    waitUntil([this] { return fs::exists(home_.busSocket()); }, "dbus-daemon did not start");
    // The toolkit asks for this bus only where it runs already.
    start("dbus-send", Role::passing,
          {"dbus-send", "--session", "--print-reply", "--dest=org.freedesktop.DBus",
           "/org/freedesktop/DBus", "org.freedesktop.DBus.StartServiceByName",
           "string:org.a11y.Bus", "uint32:0"});
    waitUntil([this] { return children_.back().process < 0; },
              "the accessibility bus did not start");
}

void Session::waitUntil(const std::function<bool()>& holds, const char* problem) {
    const double until = now() + 10;
    while (!holds())
        if (wait(10) || now() > until)
            throw std::runtime_error(problem);
}

void Session::startDesktop() {
    std::vector<std::string> common{"--scale", std::to_string(options_.scale)};
    if (options_.dark)
        common.emplace_back("--dark");
    const auto with = [&common](std::vector<std::string> words, const std::string& last = {}) {
        words.insert(words.end(), common.begin(), common.end());
        if (!last.empty())
            words.push_back(last);
        return words;
    };
    start("openbox", Role::kept,
          {"openbox", "--config-file", home_.windowManagerConfig(), "--sm-disable"});
    waitUntil([this] { return stage_->windowsAreManaged(); }, "openbox manages no windows");
    start("ControlCenter", Role::kept, with({sibling("bar", "ControlCenter")}));
    for (const auto& item : options_.items)
        start(item, Role::kept, with({sibling("items", "orrivane-status-item")}, item));
    if (options_.windows)
        for (const auto* window : {"sketch", "notes"})
            start(window, Role::kept, with({sibling("windows", "orrivane-window")}, window));
}

void Session::startGuest() {
    if (options_.program.empty())
        return;
    if (options_.scale != 1)
        environment_["QT_SCALE_FACTOR"] = std::to_string(options_.scale);
    start(options_.program.front(), Role::guest, options_.program);
}

bool Session::isComplete() {
    const auto twins = std::ranges::count(options_.items, "twins");
    return stage_->trayHasOwner() &&
           stage_->dockedItems() >=
               static_cast<int>(options_.items.size()) + static_cast<int>(twins);
}

void Session::announce() {
    const double until = now() + readyBound;
    while (!isComplete()) {
        if (wait(50))
            return;
        if (now() > until)
            throw std::runtime_error(
                "the desktop is not complete after " + std::to_string(readyBound) + " seconds: " +
                (stage_->trayHasOwner() ? std::to_string(stage_->dockedItems()) + " icons of " +
                                              std::to_string(options_.items.size()) + " programs"
                                        : "the menu bar is missing"));
    }
    std::printf("ready display=%s pid=%d\n", display_.c_str(), static_cast<int>(getpid()));
    std::fflush(stdout);
}

int Session::run() {
    startServer();
    startBus();
    startDesktop();
    announce();
    if (!result_)
        startGuest();
    while (!wait(-1)) {
    }
    return *result_;
}

bool Session::wait(int milliseconds) {
    pollfd waiting{signals_, POLLIN, 0};
    poll(&waiting, 1, milliseconds);
    signalfd_siginfo info;
    while (read(signals_, &info, sizeof info) == sizeof info)
        if (info.ssi_signo != SIGCHLD && !result_)
            result_ = 0;
    reap();
    return result_.has_value();
}

void Session::reap() {
    int status = 0;
    for (pid_t process = waitpid(-1, &status, WNOHANG); process > 0;
         process = waitpid(-1, &status, WNOHANG)) {
        const auto found = std::ranges::find(children_, process, &Child::process);
        if (found != children_.end())
            ended(*found, status);
    }
}

void Session::ended(Child& child, int status) {
    child.process = -1;
    if (result_)
        return;
    if (child.role == Role::passing)
        return;
    if (child.role == Role::guest) {
        result_ = plainStatus(status);
    } else if (child.role == Role::essential) {
        // A nested window that the user closes ends the session as he meant it.
        const bool failed =
            child.name != "Xephyr" || (WIFEXITED(status) && WEXITSTATUS(status) != 0);
        if (failed)
            std::fprintf(stderr, "orrivane-desktop: %s ended: %s\n", child.name.c_str(),
                         home_.lastWordsOf(child.name).c_str());
        result_ = failed ? 1 : 0;
    } else if (child.policy.mayRestart(now())) {
        startAgain(child);
    } else {
        std::fprintf(stderr, "orrivane-desktop: %s cannot stay and is given up: %s\n",
                     child.name.c_str(), home_.lastWordsOf(child.name).c_str());
    }
}

} // namespace orrivane::desktop
