#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orrivane::desktop {

/// The width that WM_NORMAL_HINTS declares: the base size, else the minimum; 0 for none.
int declaredWidth(const std::vector<std::uint32_t>& sizeHints);
/// The second of WM_CLASS's two strings, each ended by a zero byte.
std::string classOf(std::string_view wmClass);

} // namespace orrivane::desktop
