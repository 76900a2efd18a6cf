#pragma once

#include <linux/x11/Connection.h>

#include <cstdint>
#include <map>

namespace orrivane::x11 {

/// The windows whose contents the server keeps apart, so that they can be read while covered. A
/// window's content is complete only some moments after its redirection began, because the server
/// asks its program to draw anew.
class Redirection {
  public:
    explicit Redirection(Connection& connection)
        : connection_(connection) {}

    [[nodiscard]] bool contains(std::uint32_t window, std::uint64_t serial) const;
    void begin(std::uint32_t window, std::uint64_t serial);
    void end(std::uint32_t window);
    /// Forgets a window that is gone; the server has already.
    void forget(std::uint32_t window) { serials_.erase(window); }

    /// Seconds after which a program has drawn.
    static constexpr double settleTime = 0.06;

  private:
    Connection& connection_;
    std::map<std::uint32_t, std::uint64_t> serials_;
};

} // namespace orrivane::x11
