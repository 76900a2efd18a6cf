#pragma once

#include <functional>

namespace orrivane {

/// Seconds of a clock that nobody sets.
double steadySeconds();

/// Runs the main run loop, and the application object's events where there is one, until `holds`
/// does; false after `bound` seconds.
bool pumpUntil(const std::function<bool()>& holds, double bound = 10);

} // namespace orrivane
