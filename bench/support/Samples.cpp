#include "Samples.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace orrivane::bench {

double Samples::quantile(double share) const {
    if (values_.empty())
        throw std::logic_error("a figure without samples");
    auto sorted = values_;
    std::ranges::sort(sorted);
    const double rank = std::ceil(share * static_cast<double>(sorted.size()));
    const auto index = static_cast<std::size_t>(std::max(rank, 1.0)) - 1;
    return sorted[std::min(index, sorted.size() - 1)];
}

} // namespace orrivane::bench
