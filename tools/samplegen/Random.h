// SPDX-License-Identifier: MIT
// Random numbers that are the same on every machine. The standard defines the engine exactly, but not the
// distributions, so these are our own.
#pragma once

#include <bit>
#include <cstdint>
#include <random>

namespace samplegen {

class CRandom {
  public:
    // Each stream of a seed is a sequence of its own.
    CRandom(std::uint64_t seed, std::uint64_t stream) : engine(seed + (stream + 1) * 0x9E3779B97F4A7C15u) {}

    // At least 0 and below 1.
    double Uniform() { return static_cast<double>(engine() >> 11) * 0x1p-53; }
    double Between(double low, double high) { return low + (high - low) * Uniform(); }
    // From 0 to count - 1.
    int Below(int count) { return static_cast<int>(Uniform() * count); }
    // Nearly normal, with mean 0 and standard deviation 1: the number of heads of 64 coins, plus a uniform part that
    // fills the steps. Always between -8.125 and 8.125.
    double Normal() {
        const int heads = std::popcount(engine());
        return (heads - 32 + Uniform() - 0.5) / 4;
    }

  private:
    std::mt19937_64 engine;
};

}  // namespace samplegen
