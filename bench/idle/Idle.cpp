#include "ProcessUse.h"

#include <bench/support/MapWatch.h>
#include <bench/support/Report.h>
#include <bench/support/Samples.h>

#include <Mirror.h>

#include <cstdio>
#include <exception>
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

void reportUse(const Report& report, const std::string& name, const ProcessUse& use, double seconds,
               bool ours) {
    const auto aim = [&](double value, double limit, const std::string& unit) {
        return ours ? std::optional(Aim::atMost(value, limit, unit)) : std::nullopt;
    };
    const double perSecond = static_cast<double>(use.wakeUps()) / seconds;
    const double cpu = use.cpuMilliseconds() * 60 / seconds;
    report.figure(name, "wake-ups", perSecond, "/s", aim(perSecond, 2, "/s"));
    for (const auto& [id, thread] : use.threads)
        report.figure(name, "wake-ups of thread " + thread.name,
                      static_cast<double>(thread.wakeUps) / seconds, "/s");
    report.figure(name, "processor time", cpu, "ms/min", aim(cpu, 20, "ms/min"));
    report.figure(name, "PSS", use.pssMebibytes, "MiB", aim(use.pssMebibytes, 20, "MiB"));
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
                  process.name == "orrivane");
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
    if (!mirror.isRight())
        throw std::runtime_error("the tray was not shown all the time");
}

} // namespace

} // namespace orrivane::bench

int main() try { orrivane::bench::run(); } catch (const std::exception& failure) {
    std::fprintf(stderr, "idle: %s\n", failure.what());
    return 1;
}
