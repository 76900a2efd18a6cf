#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orrivane {

/// Calls in the order in which they were made. Copies share one list, so ports that were given the
/// same journal tell who was called before whom.
class CallJournal {
  public:
    void note(std::string call) const { calls_->push_back(std::move(call)); }
    void clear() const { calls_->clear(); }

    [[nodiscard]] const std::vector<std::string>& calls() const { return *calls_; }
    /// How many calls begin with `prefix`.
    [[nodiscard]] std::size_t count(std::string_view prefix) const {
        return static_cast<std::size_t>(std::ranges::count_if(
            *calls_, [&](const std::string& call) { return call.starts_with(prefix); }));
    }
    /// The place of the first call that begins with `prefix`; absent when there is none.
    [[nodiscard]] std::optional<std::size_t> firstIndex(std::string_view prefix) const {
        const auto found = std::ranges::find_if(
            *calls_, [&](const std::string& call) { return call.starts_with(prefix); });
        if (found == calls_->end())
            return std::nullopt;
        return static_cast<std::size_t>(found - calls_->begin());
    }

  private:
    std::shared_ptr<std::vector<std::string>> calls_ = std::make_shared<std::vector<std::string>>();
};

} // namespace orrivane
