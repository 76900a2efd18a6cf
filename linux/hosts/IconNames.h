#pragma once

#include <linux/x11/Connection.h>

#include <cstdint>
#include <string>
#include <vector>

namespace orrivane::x11 {

/// What windows call themselves (_NET_WM_NAME, else WM_NAME), in their order, empty where they do
/// not. All requests go out before the first reply is read.
std::vector<std::string> namesOf(Connection& connection, const std::vector<std::uint32_t>& windows);

} // namespace orrivane::x11
