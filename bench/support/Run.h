#pragma once

#include <string>
#include <vector>

namespace orrivane::bench {

/// Runs a program (found by PATH) on a display to its end, its output thrown away; milliseconds
/// from before it is made until it has been reaped. Throws std::runtime_error when it cannot be
/// started or fails.
double runToEnd(const std::vector<std::string>& arguments, const std::string& display);

} // namespace orrivane::bench
