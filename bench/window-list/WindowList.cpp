#include "FakeTray.h"
#include "OneByOne.h"
#include "OwnRead.h"
#include "RequestCounter.h"

#include <bench/support/Report.h>
#include <bench/support/Run.h>
#include <bench/support/Samples.h>

#include <PrivateXServer.h>
#include <TempDirectory.h>

#include <chrono>
#include <cstdio>
#include <exception>

namespace orrivane::bench {

namespace {

using Clock = std::chrono::steady_clock;

template <typename Work>
double microseconds(Work work) {
    const auto begin = Clock::now();
    work();
    return std::chrono::duration<double, std::micro>(Clock::now() - begin).count();
}

void require(bool holds, const std::string& what) {
    if (!holds)
        throw std::runtime_error(what);
}

class WindowListBench {
  public:
    WindowListBench(const std::string& display, std::size_t icons)
        : display_(display)
        , icons_(icons)
        , subject_(std::to_string(icons) + " icons")
        , tray_(display, icons) {}

    void measure() {
        measureInProcess();
        countRequests();
        measureProcesses();
    }

  private:
    void measureInProcess() {
        const int rounds = setting("ORRIVANE_BENCH_ROUNDS", 51);
        Samples first;
        Samples unchanged;
        Samples oneByOne;
        Samples ratios;
        double trips = 0;
        double plainTrips = 0;
        for (int i = 0; i < rounds; ++i) {
            OwnRead reader(display_.c_str());
            std::size_t entries = 0;
            first.add(microseconds([&] { entries = reader.read(); }));
            require(entries == 2 * icons_, "the read found " + std::to_string(entries));
            trips = static_cast<double>(reader.platform.tree.roundTrips());
            OneByOne plain(display_);
            std::size_t found = 0;
            const double plainTime = microseconds([&] { found = plain.countIcons(); });
            require(found == icons_, "one by one found " + std::to_string(found));
            plainTrips = static_cast<double>(plain.roundTrips());
            oneByOne.add(plainTime);
            ratios.add(plainTime / first.last());
            constexpr int repeats = 20;
            unchanged.add(microseconds([&] {
                              for (int n = 0; n < repeats; ++n)
                                  entries += reader.read();
                          }) /
                          repeats);
        }
        const double quick = unchanged.median();
        report_.figure(subject_, "first read", first.median() / 1000, "ms");
        report_.figure(subject_, "first read, round trips for the tree", trips, "");
        report_.figure(subject_, "one window a round trip", oneByOne.median() / 1000, "ms");
        report_.figure(subject_, "one window a round trip, round trips", plainTrips, "");
        const double ratio = ratios.median();
        report_.figure(subject_, "one window a round trip / first read", ratio, "",
                       icons_ == 1000 ? std::optional(Aim::atLeast(ratio, 5, "")) : std::nullopt);
        report_.figure(subject_, "read when nothing changed", quick, "us",
                       icons_ == 200 ? std::optional(Aim::atMost(quick, 50, "us")) : std::nullopt);
    }

    // The counter sees what a first read sends, so it would see what a later one does.
    void countRequests() {
        OwnRead reader(display_.c_str());
        auto* raw = reader.connection->raw();
        RequestCounter counter(display_, reader.connection->clientOf(xcb_generate_id(raw)));
        reader.read();
        report_.figure(subject_, "requests of a first read", static_cast<double>(counter.take(raw)),
                       "");
        constexpr int reads = 1000;
        for (int i = 0; i < reads; ++i)
            reader.read();
        const auto sent = static_cast<double>(counter.take(raw));
        report_.figure(subject_, "requests of 1000 reads when nothing changed", sent, "",
                       Aim::atMost(sent, 0, ""));
    }

    void measureProcesses() {
        struct Tool {
            std::string name;
            std::vector<std::string> arguments;
            Samples milliseconds;
        };
        std::vector<Tool> tools{
            {"own read as a process", {ORRIVANE_READ_ONCE}, {}},
            {"xwininfo -root -tree", {"xwininfo", "-root", "-tree"}, {}},
            {"xdotool search --class", {"xdotool", "search", "--class", FakeTray::iconClass}, {}},
            {"a process that does nothing", {"true"}, {}}};
        const int rounds = setting("ORRIVANE_BENCH_ROUNDS", 21);
        for (int i = 0; i < rounds; ++i)
            for (auto& tool : tools)
                tool.milliseconds.add(runToEnd(tool.arguments, display_));
        for (const auto& tool : tools)
            report_.figure(subject_, tool.name, tool.milliseconds.median(), "ms");
    }

    Report report_{"window-list"};
    std::string display_;
    std::size_t icons_;
    std::string subject_;
    FakeTray tray_;
};

} // namespace

} // namespace orrivane::bench

int main() try {
    for (const std::size_t icons : {20U, 200U, 1000U}) {
        const orrivane::e2e::TempDirectory directory;
        const orrivane::e2e::PrivateXServer server({}, directory.path());
        orrivane::bench::WindowListBench(server.display(), icons).measure();
    }
} catch (const std::exception& failure) {
    std::fprintf(stderr, "window-list: %s\n", failure.what());
    return 1;
}
