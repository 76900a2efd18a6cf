#pragma once

#include <optional>
#include <string>
#include <utility>

namespace orrivane {

/// How something ended that may fail: true on success, else false and why.
class [[nodiscard]] Outcome {
  public:
    static Outcome success() { return Outcome(std::nullopt); }
    static Outcome failure(std::string why) { return Outcome(std::move(why)); }

    explicit operator bool() const { return !why_; }
    /// Part of a sentence, without a capital and a full stop; empty on success.
    [[nodiscard]] std::string text() const { return why_.value_or(std::string()); }

  private:
    explicit Outcome(std::optional<std::string> why)
        : why_(std::move(why)) {}

    std::optional<std::string> why_;
};

} // namespace orrivane
