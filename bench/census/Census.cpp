#include <Orrivane/WindowCensus.h>

#include <bench/support/Report.h>
#include <bench/support/Samples.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

// The census beside one bare pass over the same memory. The bare pass reads every field that the
// census reads and makes the same comparisons, but remembers nothing: no set of numbers, no list
// of items, no order. What it cannot do without is what the census cannot do without.

namespace orrivane::bench {

namespace {

using Clock = std::chrono::steady_clock;

struct Lists {
    std::vector<WindowListEntry> all;
    std::vector<WindowListEntry> onscreen;
};

std::vector<ScreenDescription> notchedScreen() {
    return {{{{0, 0}, {1512, 982}}, 37, Rect{{0, 945}, {660, 37}}, Rect{{852, 945}, {660, 37}}}};
}

/// How the status items lie in a list.
enum class Mix {
    windows, ///< one entry in ten, as beside ordinary windows
    ordered, ///< every entry, right to left, as a tray stacks them
    shuffled ///< every entry, in any order
};

WindowListEntry entryOf(std::uint32_t number, double x, bool isItem) {
    const Rect bounds = isItem ? Rect{{x, 0}, {30, 37}} : Rect{{x, 120}, {640, 480}};
    return {isItem ? 25 : 0, number, bounds, std::nullopt};
}

// Three entries in four are on screen, and say so in both lists.
Lists makeLists(std::size_t count, Mix mix, unsigned seed) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> place(0, 1480);
    Lists lists;
    for (std::size_t i = 0; i < count; ++i) {
        const auto number = static_cast<std::uint32_t>(0x1400003 + 2 * i + (random() & 1U));
        lists.all.push_back(
            entryOf(number, place(random), mix != Mix::windows || random() % 10 == 0));
    }
    if (mix == Mix::ordered)
        std::ranges::sort(lists.all, std::ranges::greater{},
                          [](const WindowListEntry& entry) { return entry.bounds->minX(); });
    for (auto& entry : lists.all)
        if (random() % 4 != 0) {
            entry.onscreen = true;
            lists.onscreen.push_back(entry);
        }
    return lists;
}

[[gnu::noinline]] std::uint64_t barePass(const ScreenDescription& screen, const Lists& lists) {
    std::uint64_t sum = 0;
    for (const auto& entry : lists.onscreen)
        if (entry.number)
            sum += *entry.number;
    const double notchMinX = screen.auxiliaryTopLeftArea->maxX();
    const double notchMaxX = screen.auxiliaryTopRightArea->minX();
    for (const auto& entry : lists.all) {
        if (entry.layer != 25 || !entry.number || !entry.bounds)
            continue;
        const Rect& bounds = *entry.bounds;
        if (std::abs(bounds.origin.y) > 2 || bounds.height() > 40 || bounds.width() > 400 ||
            bounds.maxX() > screen.frame.maxX() + 1 || bounds.minX() < screen.frame.minX() - 1)
            continue;
        const bool eaten = bounds.minX() < notchMaxX && bounds.maxX() > notchMinX;
        sum += *entry.number + (eaten ? 1U : 0U) + (entry.onscreen.value_or(false) ? 2U : 0U);
    }
    return sum;
}

volatile std::uint64_t sink = 0;

/// Nanoseconds an entry, once over each of the lists, several times.
template <typename Work>
double timeOf(const std::vector<Lists>& variants, std::size_t count, int repeats, Work work) {
    const auto begin = Clock::now();
    for (int i = 0; i < repeats; ++i)
        for (const auto& lists : variants)
            sink = sink + work(lists);
    const std::chrono::duration<double, std::nano> taken = Clock::now() - begin;
    return taken.count() / (static_cast<double>(count) * static_cast<double>(variants.size()) *
                            static_cast<double>(repeats));
}

void measure(const Report& report, std::size_t count, Mix mix, const std::string& name) {
    const auto screens = notchedScreen();
    std::vector<Lists> variants;
    for (unsigned seed = 1; seed <= 8; ++seed)
        variants.push_back(makeLists(count, mix, seed));
    const auto census = [&](const Lists& lists) {
        return static_cast<std::uint64_t>(
            WindowCensus::take(screens, lists.all, lists.onscreen).items.size());
    };
    const auto bare = [&](const Lists& lists) { return barePass(screens.front(), lists); };

    const int rounds = setting("ORRIVANE_BENCH_ROUNDS", 401);
    const int repeats = static_cast<int>(std::max<std::size_t>(1, 3000 / count / 8));
    Samples censusTimes;
    Samples bareTimes;
    Samples ratios;
    for (int i = 0; i < rounds; ++i) {
        const double ours = timeOf(variants, count, repeats, census);
        const double least = timeOf(variants, count, repeats, bare);
        censusTimes.add(ours);
        bareTimes.add(least);
        ratios.add(ours / least);
    }
    const std::string subject = std::to_string(count) + " entries, " + name;
    const double ratio = ratios.median();
    report.figure(subject, "census", censusTimes.median(), "ns/entry");
    report.figure(subject, "bare pass", bareTimes.median(), "ns/entry");
    report.figure(subject, "census / bare pass", ratio, "", Aim::atMost(ratio, 3, ""));
}

} // namespace

} // namespace orrivane::bench

int main() {
    using namespace orrivane::bench;
    const Report report("census");
    for (const std::size_t count : {30U, 300U, 3000U}) {
        measure(report, count, Mix::windows, "1 in 10 an item");
        measure(report, count, Mix::ordered, "all items");
        measure(report, count, Mix::shuffled, "all items, shuffled");
    }
}
