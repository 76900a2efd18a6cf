#pragma once

#include <macos/system/CFRef.h>
#include <tests/macos/fakes/Heap.h>

#include <string>
#include <utility>
#include <vector>

/// Objects as other programs and the system make them, the odd ones too.
namespace orrivane::fakes {

using Any = CFRef<CFTypeRef>;

Any integer(std::int64_t value);
Any real(double value);
Any truth(bool value);
Any text(const std::string& utf8);
/// Half of a pair: a string that no UTF-8 stands for.
Any brokenText();
/// An empty member is null, which an array may hold.
Any list(const std::vector<Any>& members);
Any table(const std::vector<std::pair<std::string, Any>>& members);

Any packed(AXValueType type, std::vector<double> numbers);
Any point(double x, double y);
Any size(double width, double height);
Any rect(double x, double y, double width, double height);

/// The dictionary that a rectangle is stored as.
Any rectTable(double x, double y, double width, double height);

} // namespace orrivane::fakes
