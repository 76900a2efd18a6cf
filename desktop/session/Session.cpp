#include <desktop/session/Session.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <poll.h>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/signalfd.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ; // NOLINT: POSIX declares it nowhere

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

Environment inheritedEnvironment() {
    Environment result;
    for (char** word = environ; *word; ++word) {
        const std::string text = *word;
        const auto sign = text.find('=');
        if (sign != std::string::npos)
            result.emplace(text.substr(0, sign), text.substr(sign + 1));
    }
    // What belongs to the desktop outside.
    for (const auto* name : {"WAYLAND_DISPLAY", "XAUTHORITY", "SESSION_MANAGER",
                             "AT_SPI_BUS_ADDRESS", "DBUS_SESSION_BUS_PID", "DESKTOP_STARTUP_ID",
                             "QT_SCALE_FACTOR", "QT_QPA_PLATFORM", "QT_QPA_PLATFORMTHEME"})
        result.erase(name);
    return result;
}

// Undecorated windows, no menu of the root's, nothing on the keyboard.
constexpr const char* windowManagerConfig =
    "<?xml version=\"1.0\"?>\n"
    "<openbox_config xmlns=\"http://openbox.org/3.4/rc\">\n"
    "  <focus><focusNew>yes</focusNew></focus>\n"
    "  <placement><policy>Smart</policy></placement>\n"
    "  <desktops><number>1</number></desktops>\n"
    "  <mouse>\n"
    "    <context name=\"Client\">\n"
    "      <mousebind button=\"Left\" action=\"Press\"><action name=\"Focus\"/>"
    "<action name=\"Raise\"/></mousebind>\n"
    "    </context>\n"
    "    <context name=\"Titlebar\">\n"
    "      <mousebind button=\"Left\" action=\"Press\"><action name=\"Focus\"/>"
    "<action name=\"Raise\"/></mousebind>\n"
    "      <mousebind button=\"Left\" action=\"Drag\"><action name=\"Move\"/></mousebind>\n"
    "    </context>\n"
    "    <context name=\"Close\">\n"
    "      <mousebind button=\"Left\" action=\"Click\"><action name=\"Close\"/></mousebind>\n"
    "    </context>\n"
    "  </mouse>\n"
    "</openbox_config>\n";

int plainStatus(int status) {
    constexpr int bySignal = 128; // as shells say it
    return WIFEXITED(status) ? WEXITSTATUS(status) : bySignal + WTERMSIG(status);
}

std::string lastLines(const std::string& path) {
    std::ifstream file(path);
    std::string text{std::istreambuf_iterator<char>(file), {}};
    constexpr std::size_t enough = 400;
    return text.size() > enough ? text.substr(text.size() - enough) : text;
}

} // namespace

Session::Session(SessionOptions options)
    : options_(std::move(options))
    , environment_(inheritedEnvironment()) {
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
    makeFolders();
}

Session::~Session() {
    stage_.reset();
    std::vector<pid_t> groups;
    for (const auto& child : children_)
        if (child.process > 0)
            groups.push_back(child.process);
    endAll(groups);
    close(signals_);
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
}

void Session::makeFolders() {
    const char* parent = std::getenv("TMPDIR");
    std::string name =
        std::string(parent && *parent ? parent : "/tmp") + "/orrivane-desktop-XXXXXX";
    if (!mkdtemp(name.data()))
        throw std::runtime_error("no folder can be made below " + name + "; set TMPDIR");
    folder_ = name;
    for (const auto* each : {"config", "run", "logs", "data", "cache"})
        fs::create_directory(fs::path(folder_) / each);
    fs::permissions(fs::path(folder_) / "run", fs::perms::owner_all);
    const auto config =
        options_.config.empty() ? folder_ + "/config" : fs::absolute(options_.config).string();
    fs::create_directories(config);
    environment_["HOME"] = folder_;
    environment_["XDG_CONFIG_HOME"] = config;
    environment_["XDG_RUNTIME_DIR"] = folder_ + "/run";
    environment_["XDG_DATA_HOME"] = folder_ + "/data";
    environment_["XDG_CACHE_HOME"] = folder_ + "/cache";
    environment_["ORRIVANE_DESKTOP_LOG"] =
        options_.log.empty() ? folder_ + "/choices" : fs::absolute(options_.log).string();
    environment_["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1";
    environment_["XDG_CURRENT_DESKTOP"] = "Orrivane";
    std::ofstream(folder_ + "/rc.xml") << windowManagerConfig;
}

std::string Session::logOf(const std::string& name) const {
    return folder_ + "/logs/" + name;
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
        child.launch.output = logOf(child.name);
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
    throw std::runtime_error(what + " did not start: " + lastLines(logOf(what)));
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
                           .output = logOf(name),
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
    const auto address = "unix:path=" + folder_ + "/run/bus";
    environment_["DBUS_SESSION_BUS_ADDRESS"] = address;
    start("dbus-daemon", Role::essential,
          {"dbus-daemon", "--session", "--nofork", "--nopidfile", "--address=" + address});
    waitUntil([this] { return fs::exists(folder_ + "/run/bus"); }, "dbus-daemon did not start");
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
    start("openbox", Role::kept, {"openbox", "--config-file", folder_ + "/rc.xml", "--sm-disable"});
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
                         lastLines(logOf(child.name)).c_str());
        result_ = failed ? 1 : 0;
    } else if (child.policy.mayRestart(now())) {
        startAgain(child);
    } else {
        std::fprintf(stderr, "orrivane-desktop: %s cannot stay and is given up: %s\n",
                     child.name.c_str(), lastLines(logOf(child.name)).c_str());
    }
}

} // namespace orrivane::desktop
