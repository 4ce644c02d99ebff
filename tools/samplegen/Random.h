// Chance that is the same on every machine: the engine is settled by the standard, its distributions are not.
#pragma once

#include <bit>
#include <cstdint>
#include <random>

namespace samplegen {

class CRandom {
  public:
    // Streams of one seed do not depend on each other.
    CRandom(std::uint64_t seed, std::uint64_t stream) : engine(seed + (stream + 1) * 0x9E3779B97F4A7C15u) {}

    // From 0 up to, but not, 1.
    double Uniform() { return static_cast<double>(engine() >> 11) * 0x1p-53; }
    double Between(double low, double high) { return low + (high - low) * Uniform(); }
    // From 0 to count - 1.
    int Below(int count) { return static_cast<int>(Uniform() * count); }
    // Mean 0 and standard deviation 1: the number of heads of 64 coins, its steps filled in. It never leaves -8 to 8.
    double Normal() {
        const int heads = std::popcount(engine());
        return (heads - 32 + Uniform() - 0.5) / 4;
    }

  private:
    std::mt19937_64 engine;
};

}  // namespace samplegen
