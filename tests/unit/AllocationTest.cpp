#include <Orrivane/WindowCensus.h>

#include <tests/support/ScriptedScreens.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <new>
#include <vector>

// A program of its own: it replaces the allocator that all tests linked with it would share.

namespace {

struct Allocations {
    std::size_t calls = 0;
    std::size_t bytes = 0;

    friend bool operator==(const Allocations&, const Allocations&) = default;
};

Allocations* counting = nullptr;

} // namespace

void* operator new(std::size_t size) {
    if (counting) {
        ++counting->calls;
        counting->bytes += size;
    }
    if (void* memory = std::malloc(size == 0 ? 1 : size))
        return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace orrivane {
namespace {

using Entries = std::vector<WindowListEntry>;

const std::vector<ScreenDescription> screens{ScriptedScreens::notched()};
constexpr std::uint32_t manyWindows = 10'000;

Allocations during(const Entries& all, const Entries& onscreen = {}) {
    Allocations allocations;
    counting = &allocations;
    const auto result = WindowCensus::take(screens, all, onscreen);
    counting = nullptr;
    return allocations;
}

WindowListEntry entry(std::uint32_t number, const Rect& bounds = {{700, 0}, {20, 24}}) {
    return {25, number, bounds, true};
}

// A few items in front, in the middle and at the end of very many other windows.
Entries among(const std::vector<WindowListEntry>& others) {
    Entries all{entry(1)};
    all.insert(all.end(), others.begin(), others.end());
    all.push_back(entry(2));
    all.insert(all.end(), others.begin(), others.end());
    all.push_back(entry(3));
    return all;
}

TEST(Allocations, areCountedForWhatIsKept) {
    Entries few;
    Entries many;
    for (std::uint32_t number = 1; number <= 1000; ++number) {
        (number <= 10 ? few : many).push_back(entry(number));
        if (number <= 10)
            many.push_back(entry(number));
    }
    const auto forFew = during(few);
    EXPECT_GT(forFew.calls, 0U);
    EXPECT_GT(during(many).bytes, forFew.bytes);
}

TEST(Allocations, noneIsMadeForADroppedEntry) {
    const auto without = during(among({}));
    const std::vector<std::pair<const char*, WindowListEntry>> kinds{
        {"no layer", {std::nullopt, 9, Rect{{0, 0}, {20, 24}}, true}},
        {"another layer", {24, 9, Rect{{0, 0}, {20, 24}}, true}},
        {"no number", {25, std::nullopt, Rect{{0, 0}, {20, 24}}, true}},
        {"no bounds", {25, 9, std::nullopt, true}},
        {"off the line", entry(9, {{700, 3}, {20, 24}})},
        {"too high", entry(9, {{700, 0}, {20, 41}})},
        {"too wide", entry(9, {{700, 0}, {401, 24}})},
        {"off the screen", entry(9, {{1500, 0}, {20, 24}})},
        {"taken already", entry(1)},
    };
    for (const auto& [kind, dropped] : kinds) {
        auto others = std::vector(manyWindows, dropped);
        // Each with a number of its own, where it is not the number that drops it.
        for (std::uint32_t i = 0; i < manyWindows; ++i)
            if (others[i].number == 9)
                others[i].number = 1000 + i;
        EXPECT_EQ(during(among(others)), without) << kind;
    }
}

TEST(Allocations, noneIsMadeForAnOnscreenEntryWithoutNumber) {
    const WindowListEntry numberless{25, std::nullopt, Rect{{0, 0}, {20, 24}}, true};
    auto hidden = entry(1);
    hidden.onscreen = false; // so that the list is looked at
    const auto once = during({hidden}, Entries(1, numberless));
    const auto often = during({hidden}, Entries(2, numberless));
    EXPECT_EQ(once.calls, often.calls);
}

} // namespace
} // namespace orrivane
