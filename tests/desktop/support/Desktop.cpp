#include "Desktop.h"

#include "RequiredHere.h"
#include "Screenshot.h"
#include "Surroundings.h"
#include "TestWindow.h"
#include "WaitFor.h"

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>
#include <stdexcept>

namespace orrivane::e2e {

namespace {

constexpr std::size_t logTail = 4000;

void printLog(const std::string& name, const std::string& log) {
    if (!log.empty()) {
        const std::size_t from = log.size() > logTail ? log.size() - logTail : 0;
        std::cerr << "---- " << name << "\n" << log.substr(from) << "\n";
    }
}

void printWindows(Observer& observer) try {
    std::cerr << "---- windows: name, place, class, type\n";
    for (const WindowState& state : observer.tree()) {
        if (state.mapState != MapState::unmapped || state.xembed) {
            std::cerr << std::string(static_cast<std::size_t>(state.level), ' ') << std::hex
                      << state.id << std::dec << ' ' << state.area << ' ' << state.className << ' '
                      << state.type << (state.isViewable() ? "" : " not viewable") << '\n';
        }
    }
} catch (const std::exception& failure) {
    std::cerr << "cannot read the windows: " << failure.what() << '\n';
}

} // namespace

Desktop::Desktop(const Options& options)
    : options_(options) {
    adoptOrphans();
    if (options_.trayRight == 0)
        options_.trayRight = options_.server.width / 2 + 120;
    try {
        bringUp();
    } catch (...) {
        report();
        throw;
    }
}

void Desktop::bringUp() {
    std::filesystem::create_directory(directory() + "/run");
    std::filesystem::permissions(directory() + "/run", std::filesystem::perms::owner_all);
    server_.emplace(options_.server, directory());
    observer_.emplace(server_->display());
    // The bus starts services on the applications' behalf, among them the panels' settings:
    // it shares the host's home folder.
    bus_.emplace(
        graphicalEnvironment(server_->display(), directory() + "/host", directory() + "/run"),
        directory() + "/run");
    if (options_.windowManager)
        startWindowManager();
    if (!options_.host.empty())
        startHost(options_.host);
}

Desktop::~Desktop() {
    if (testing::Test::HasFailure() || std::uncaught_exceptions() > 0)
        report();
    program_.reset();
    clients_.clear();
    others_.clear();
    host_.reset();
    windowManager_.reset();
    bus_.reset();
    observer_.reset();
    server_.reset();
    endOrphans();
}

void Desktop::report() {
    for (const auto& entry : std::filesystem::directory_iterator(directory()))
        if (entry.path().extension() == ".log")
            printLog(entry.path().filename().string(), readFile(entry.path().string()));
    if (observer_)
        printWindows(*observer_);
    const char* artifacts = std::getenv("ORRIVANE_E2E_ARTIFACTS");
    const auto* test = testing::UnitTest::GetInstance()->current_test_info();
    if (artifacts == nullptr || test == nullptr || !observer_)
        return;
    std::string name = std::string(test->test_suite_name()) + "." + test->name() + ".png";
    std::replace(name.begin(), name.end(), '/', '_');
    try {
        saveScreenshot(*observer_, std::string(artifacts) + "/" + name);
    } catch (const std::exception& failure) {
        std::cerr << "no picture of the screen: " << failure.what() << "\n";
    }
}

std::string Desktop::logFor(const std::string& name) {
    const std::string base = std::filesystem::path(name).filename().string();
    return directory() + "/" + std::to_string(logCount_++) + "-" + base + ".log";
}

Environment Desktop::environment(const std::string& name) const {
    Environment result =
        graphicalEnvironment(server_->display(), directory() + "/" + name, directory() + "/run");
    setSessionBus(result, bus_->address());
    return result;
}

ChildProcess& Desktop::start(const std::vector<std::string>& arguments, Environment environment) {
    ChildProcess::Options child;
    child.arguments = arguments;
    child.environment = std::move(environment);
    child.logFile = logFor(arguments.at(0));
    return others_.emplace_back(std::move(child));
}

void Desktop::startWindowManager() {
    const Environment surroundings = environment("openbox");
    ChildProcess::Options child;
    child.arguments = {"openbox", "--sm-disable"};
    if (!options_.windowManagerConfig.empty()) {
        const std::string file = surroundings.at("HOME") + "/rc.xml";
        writeFile(file, options_.windowManagerConfig);
        child.arguments.insert(child.arguments.end(), {"--config-file", file});
    }
    child.environment = surroundings;
    child.logFile = logFor("openbox");
    windowManager_.emplace(std::move(child));
    // It announces itself before it serves: only a window it has taken over proves that it does.
    TestWindow probe(*observer_, {{0, 0, 8, 8}});
    const auto ready = waitFor("the window manager takes windows over", [&] {
        probe.map();
        return probe.isManaged();
    });
    if (!ready)
        throw std::runtime_error(ready.message() + windowManager_->log());
}

void Desktop::startHost(const std::string& name) {
    hostKind_ = &trayHost(name);
    const HostPlace place{options_.server.width, options_.barHeight, options_.trayRight};
    host_.emplace(hostKind_->start(place, environment("host"), logFor(name)));
    const auto ready = waitFor("the tray of " + name + " is there", [&] {
        return observer_->trayOwner() != XCB_NONE && observer_->dockOf().has_value();
    });
    if (!ready)
        throw std::runtime_error(ready.message() + host_->log());
}

void Desktop::stopHost() {
    host_.reset();
    hostKind_ = nullptr;
    // Parts of a panel may be processes the bus started: the tray goes when its owner does.
    if (const auto gone =
            waitFor("the tray is gone", [&] { return observer_->trayOwner() == XCB_NONE; });
        !gone) {
        throw std::runtime_error(gone.message());
    }
}

DockedClient& Desktop::startClient(const std::string& name, BusAccess access) {
    const TrayClient& kind = trayClient(name);
    if (access == BusAccess::asTheHostNeeds) {
        const bool wouldLeave =
            hostKind_ != nullptr && hostKind_->takesStatusNotifiers && kind.prefersStatusNotifier;
        access = wouldLeave ? BusAccess::none : BusAccess::session;
    }
    Environment surroundings = environment(name + std::to_string(logCount_));
    if (access == BusAccess::none)
        setSessionBus(surroundings, "");
    ChildProcess process = kind.start(surroundings, logFor(name));
    xcb_window_t icon = XCB_NONE;
    const auto docked = waitFor("the icon of " + name + " docks", [&] {
        for (const WindowState& state : observer_->trayIcons())
            if (state.isViewable() && observer_->pidOf(state.id) == process.pid())
                icon = state.id;
        return icon != XCB_NONE;
    });
    if (!docked)
        throw std::runtime_error(docked.message() + ("\n" + process.log()));
    clients_.push_back({&kind, std::move(process), icon});
    settledIcons();
    return clients_.back();
}

std::string missingPrograms(const std::vector<std::string>& programs) {
    std::string missing;
    for (const std::string& program : programs)
        if (!isInstalled(program))
            missing += " " + program;
    if (missing.empty())
        return {};
    return reasonToSkip("not installed:" + missing);
}

} // namespace orrivane::e2e
