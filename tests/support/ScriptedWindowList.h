#pragma once

#include <Orrivane/platform/WindowList.h>
#include <tests/support/CallJournal.h>

#include <cstdint>
#include <map>
#include <string>
#include <tuple>
#include <utility>

namespace orrivane {

/// Two window lists as a test writes them, malformed entries included.
class ScriptedWindowList : public WindowList {
  public:
    explicit ScriptedWindowList(CallJournal calls = {})
        : journal(std::move(calls)) {}

    std::vector<WindowListEntry> all;
    std::vector<WindowListEntry> onscreen;
    /// By window number; windows without an entry have no known owner.
    std::map<std::uint32_t, std::pair<std::int32_t, std::string>> owners;
    CallJournal journal;

    static constexpr std::int64_t statusItemLayer = 25;

    /// A window in both lists, or in the full one only.
    void add(std::uint32_t number, const Rect& bounds, bool isOnscreen = true,
             std::int64_t layer = statusItemLayer) {
        const WindowListEntry entry{
            .layer = layer, .number = number, .bounds = bounds, .onscreen = isOnscreen};
        all.push_back(entry);
        if (isOnscreen)
            onscreen.push_back(entry);
    }
    void remove(std::uint32_t number) {
        const auto is = [number](const WindowListEntry& entry) { return entry.number == number; };
        std::erase_if(all, is);
        std::erase_if(onscreen, is);
    }
    void clear() {
        all.clear();
        onscreen.clear();
    }

    std::vector<WindowListEntry> allWindows() override {
        journal.note("allWindows");
        return all;
    }
    std::vector<WindowListEntry> onscreenWindows() override {
        journal.note("onscreenWindows");
        return onscreen;
    }
    std::vector<OwnedWindow> ownedWindows() override {
        journal.note("ownedWindows");
        std::vector<OwnedWindow> result;
        for (const auto& entry : all) {
            result.push_back({entry, std::nullopt, std::nullopt});
            const auto found = owners.find(entry.number.value_or(0));
            if (found != owners.end())
                std::tie(result.back().process, result.back().owner) = found->second;
        }
        return result;
    }
};

} // namespace orrivane
