#pragma once

#include <cstdlib>
#include <memory>

namespace orrivane::x11 {

struct FreeDeleter {
    void operator()(void* memory) const { std::free(memory); }
};

/// A reply, an error or an event that libxcb allocated; owned by the holder.
template <typename T>
using Owned = std::unique_ptr<T, FreeDeleter>;

} // namespace orrivane::x11
