#pragma once

#include <cstddef>
#include <deque>

namespace orrivane::desktop {

/// A program that ends is started again at once, but not one that cannot stay: after five ends in
/// ten seconds it is given up. Times are seconds of any clock that does not go back.
class RestartPolicy {
  public:
    static constexpr std::size_t mostEnds = 5;
    static constexpr double period = 10;

    /// The program has just ended; whether to start it again.
    [[nodiscard]] bool mayRestart(double now) {
        ends_.push_back(now);
        while (now - ends_.front() > period)
            ends_.pop_front();
        return ends_.size() < mostEnds;
    }

  private:
    std::deque<double> ends_;
};

} // namespace orrivane::desktop
