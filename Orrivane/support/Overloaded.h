#pragma once

namespace orrivane {

/// One function out of one for each alternative, for std::visit.
template <typename... Functions>
struct Overloaded : Functions... {
    using Functions::operator()...;
};
// Clang deduces this by itself from its version 17 on.
template <typename... Functions>
Overloaded(Functions...) -> Overloaded<Functions...>;

} // namespace orrivane
