#pragma once

#include <cstdint>
#include <cstdlib>
#include <random>
#include <string>

namespace orrivane {

/// Repeatable chance: the seed comes from ORRIVANE_SEED, else from the machine, and is told by
/// `trace` in every failure.
class Random {
  public:
    Random()
        : seed_(chosenSeed())
        , engine_(seed_) {}

    [[nodiscard]] std::string trace() const { return "ORRIVANE_SEED=" + std::to_string(seed_); }
    /// Both ends included.
    int integer(int low, int high) { return std::uniform_int_distribution(low, high)(engine_); }
    double real(double low, double high) {
        return std::uniform_real_distribution(low, high)(engine_);
    }
    bool chance(double probability) { return real(0, 1) < probability; }

  private:
    static std::uint32_t chosenSeed() {
        if (const char* given = std::getenv("ORRIVANE_SEED"))
            return static_cast<std::uint32_t>(std::strtoul(given, nullptr, 10));
        return std::random_device{}();
    }

    std::uint32_t seed_;
    std::mt19937 engine_;
};

} // namespace orrivane
