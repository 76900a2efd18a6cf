#pragma once

#include <cstddef>
#include <span>

namespace orrivane::x11 {

/// While one lives, a signal that would end or stop the program unforeseen first writes `requests`
/// to `descriptor` and only then does so: the server keeps pressed what a dead client has pressed
/// by XTest. The requests are whole ones; the newest instance counts. Only a signal that
/// cannot be caught escapes it.
class CrashRelease {
  public:
    /// At most `largest` bytes of them are taken.
    CrashRelease(int descriptor, std::span<const unsigned char> requests);
    CrashRelease(const CrashRelease&) = delete;
    CrashRelease& operator=(const CrashRelease&) = delete;
    ~CrashRelease();

    static constexpr std::size_t largest = 256;
};

} // namespace orrivane::x11
