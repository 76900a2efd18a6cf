#pragma once

#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <string_view>

namespace orrivane::desktop {

/// What an icon shows: which entries of its menu are checked or were chosen, and how often its
/// clock has ticked.
struct ItemState {
    std::set<std::string, std::less<>> on;
    std::int64_t steps = 0;

    bool isOn(std::string_view entry) const { return on.find(entry) != on.end(); }
};

} // namespace orrivane::desktop
