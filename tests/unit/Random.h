#pragma once

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <random>
#include <string>

namespace orrivane {

/// Repeatable chance: the seed comes from ORRIVANE_SEED, else from the machine. It is printed at
/// once, because a test that crashes or hangs tells nothing later, and by `trace` in every failure.
class Random {
  public:
    Random()
        : seed_(chosenSeed())
        , engine_(seed_) {
        std::cout << trace() << std::endl;
    }

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
