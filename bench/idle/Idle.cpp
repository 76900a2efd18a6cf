#include "ProcessUse.h"

#include <bench/support/MapWatch.h>
#include <bench/support/Report.h>
#include <bench/support/Samples.h>

#include <Mirror.h>
#include <WaitFor.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string_view>
#include <thread>

// How long the program takes from its start to the first tray, and what it uses while the tray is
// shown and nothing happens, beside two tray hosts over the same seconds.

namespace orrivane::bench {

namespace {

using Clock = MapWatch::Clock;

e2e::Desktop::Options hosted(const std::string& host) {
    e2e::Desktop::Options options;
    options.host = host;
    return options;
}

// None of them uses the program's toolkit: what they shared would not be counted as its own.
void fill(e2e::Desktop& desktop) {
    for (const char* name : {"parcellite", "xfce4-clipman", "volumeicon"})
        desktop.startClient(name);
}

double startUntilTray(e2e::Desktop& desktop, MapWatch& watch) {
    watch.startAfresh();
    const auto begin = Clock::now();
    const auto pid = desktop.startProgram().pid();
    const auto mapped =
        watch.waitFor([&](xcb_window_t window) { return desktop.observer().pidOf(window) == pid; },
                      begin + std::chrono::seconds(20));
    if (!mapped)
        throw std::runtime_error("no tray was shown\n" + desktop.program().log());
    return std::chrono::duration<double, std::milli>(mapped->at - begin).count();
}

void measureStart(const Report& report, e2e::Desktop& desktop) {
    MapWatch watch(desktop.server().display());
    Samples times;
    const int rounds = setting("ORRIVANE_BENCH_ROUNDS", 21);
    for (int i = 0; i < rounds; ++i)
        times.add(startUntilTray(desktop, watch));
    const double median = times.median();
    report.figure("start", "exec until the first tray is mapped, p50", median, "ms",
                  Aim::atMost(median, 400, "ms"));
    report.figure("start", "exec until the first tray is mapped, p95", times.quantile(0.95), "ms");
}

/// The whole program may take more memory once its window was open.
constexpr double pssWithTray = 20;    // MiB
constexpr double pssAfterWindow = 35; // MiB

void reportUse(const Report& report, const std::string& name, const ProcessUse& use, double seconds,
               std::optional<double> pssLimit) {
    const auto aim = [&](double value, double limit, const std::string& unit) {
        return pssLimit ? std::optional(Aim::atMost(value, limit, unit)) : std::nullopt;
    };
    const double perSecond = static_cast<double>(use.wakeUps()) / seconds;
    const double cpu = use.cpuMilliseconds() * 60 / seconds;
    report.figure(name, "wake-ups", perSecond, "/s", aim(perSecond, 2, "/s"));
    for (const auto& [id, thread] : use.threads)
        report.figure(name, "wake-ups of thread " + thread.name,
                      static_cast<double>(thread.wakeUps) / seconds, "/s");
    report.figure(name, "processor time", cpu, "ms/min", aim(cpu, 20, "ms/min"));
    report.figure(name, "PSS", use.pssMebibytes, "MiB",
                  aim(use.pssMebibytes, pssLimit.value_or(0), "MiB"));
    report.figure(name, "private memory", use.privateMebibytes, "MiB");
}

void measureIdle(const Report& report, e2e::Desktop& desktop, e2e::Desktop& other) {
    const int seconds = setting("ORRIVANE_BENCH_SECONDS", 60);
    struct Process {
        std::string name;
        pid_t pid;
        ProcessUse before;
    };
    std::vector<Process> processes{{"orrivane", desktop.program().pid(), {}},
                                   {"trayer", desktop.host().pid(), {}},
                                   {"tint2", other.host().pid(), {}}};
    // What a start leaves to be done later is no part of idling.
    std::this_thread::sleep_for(std::chrono::seconds(5));
    for (auto& process : processes)
        process.before = ProcessUse::of(process.pid);
    const auto begin = Clock::now();
    std::this_thread::sleep_for(std::chrono::seconds(seconds));
    const double length = std::chrono::duration<double>(Clock::now() - begin).count();
    for (const auto& process : processes)
        reportUse(report, process.name, ProcessUse::of(process.pid).since(process.before), length,
                  process.name == "orrivane" ? std::optional(pssWithTray) : std::nullopt);
}

std::optional<e2e::WindowState> windowOf(e2e::Desktop& desktop) {
    constexpr int smallest = 300; // pixels
    for (const auto& each : desktop.observer().tree())
        if (each.isViewable() && each.area.width >= smallest && each.area.height >= smallest &&
            desktop.observer().pidOf(each.id) == desktop.program().pid())
            return each;
    return std::nullopt;
}

/// As a user does: a second launch brings the window, and its frame's button closes it.
void openAndCloseTheWindow(e2e::Desktop& desktop) {
    e2e::ChildProcess::Options options;
    options.arguments = {e2e::Desktop::programPath()};
    options.environment = desktop.environment("orrivane");
    options.logFile = desktop.directory() + "/second.log";
    e2e::ChildProcess second(std::move(options));
    if (!second.wait(e2e::defaultBound))
        throw std::runtime_error("the second launch does not end");
    const auto window =
        e2e::waitForValue<e2e::WindowState>("the window", [&] { return windowOf(desktop); });
    std::this_thread::sleep_for(std::chrono::seconds(3)); // it has shown and refreshed everything
    auto* raw = desktop.observer().connection();
    const auto atom = [raw](std::string_view name) {
        auto* reply = xcb_intern_atom_reply(
            raw, xcb_intern_atom(raw, 0, static_cast<std::uint16_t>(name.size()), name.data()),
            nullptr);
        const xcb_atom_t value = reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
        std::free(reply);
        return value;
    };
    xcb_client_message_event_t close{};
    close.response_type = XCB_CLIENT_MESSAGE;
    close.format = 32;
    close.window = window.id;
    close.type = atom("WM_PROTOCOLS");
    close.data.data32[0] = atom("WM_DELETE_WINDOW");
    xcb_send_event(raw, 0, window.id, 0, reinterpret_cast<const char*>(&close));
    xcb_flush(raw);
    if (const auto closed = e2e::waitFor("it closes", [&] { return !windowOf(desktop); }); !closed)
        throw std::runtime_error(closed.message());
}

void measureAfterTheWindow(const Report& report, e2e::Desktop& desktop) {
    openAndCloseTheWindow(desktop);
    std::this_thread::sleep_for(std::chrono::seconds(5));
    const int seconds = setting("ORRIVANE_BENCH_SECONDS", 60);
    const pid_t process = desktop.program().pid();
    const auto before = ProcessUse::of(process);
    const auto begin = Clock::now();
    std::this_thread::sleep_for(std::chrono::seconds(seconds));
    const double length = std::chrono::duration<double>(Clock::now() - begin).count();
    reportUse(report, "orrivane, window closed", ProcessUse::of(process).since(before), length,
              pssAfterWindow);
}

void run() {
    const Report report("idle");
    e2e::Desktop desktop(hosted("trayer"));
    e2e::Desktop other(hosted("tint2"));
    fill(desktop);
    fill(other);
    desktop.cutOutIcons(0, 2);
    measureStart(report, desktop);
    e2e::Mirror mirror(desktop);
    if (const auto right = mirror.waitUntilRight(); !right)
        throw std::runtime_error(right.message());
    measureIdle(report, desktop, other);
    measureAfterTheWindow(report, desktop);
    if (!mirror.isRight())
        throw std::runtime_error("the tray was not shown all the time");
}

} // namespace

} // namespace orrivane::bench

int main() try { orrivane::bench::run(); } catch (const std::exception& failure) {
    std::fprintf(stderr, "idle: %s\n", failure.what());
    return 1;
}
