#pragma once

#include <cstddef>
#include <vector>

namespace orrivane::bench {

/// Measured values of one figure.
class Samples {
  public:
    void add(double value) { values_.push_back(value); }
    [[nodiscard]] std::size_t size() const { return values_.size(); }
    [[nodiscard]] double last() const { return values_.back(); }
    /// The smallest value that at least the given share (0 to 1) of the samples does not exceed.
    /// Throws std::logic_error without samples.
    [[nodiscard]] double quantile(double share) const;
    [[nodiscard]] double median() const { return quantile(0.5); }

  private:
    std::vector<double> values_;
};

} // namespace orrivane::bench
