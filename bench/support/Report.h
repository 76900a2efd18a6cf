#pragma once

#include <optional>
#include <string>

namespace orrivane::bench {

/// What a figure was meant to be, and whether it is.
struct Aim {
    std::string text;
    bool met = false;

    static Aim atMost(double value, double limit, const std::string& unit);
    static Aim atLeast(double value, double limit, const std::string& unit);
};

/// Prints one tab-separated line a figure: program, case, figure, value, unit, aim, whether it was
/// met, the machine's load average over the last minute.
class Report {
  public:
    explicit Report(std::string program)
        : program_(std::move(program)) {}

    void figure(const std::string& subject, const std::string& what, double value,
                const std::string& unit, const std::optional<Aim>& aim = std::nullopt) const;

  private:
    std::string program_;
};

/// A number with about three significant digits.
std::string shortNumber(double value);

/// A positive whole number of the environment, else `otherwise`.
int setting(const char* name, int otherwise);

} // namespace orrivane::bench
