// SPDX-License-Identifier: MIT
// A read whose bases are known: Gaussian peaks on channels that show A, C, T and G, with what real runs add to them.
#pragma once

#include <array>
#include <cmath>
#include <random>
#include <string>
#include <vector>

using TestChannels = std::array<std::vector<double>, 4>;

struct Ways {
    int bases = 300;
    double spacing = 11, drift = 0;  // scans at the first base, and how much wider the last one is
    std::array<double, 4> shifts{};  // scans by which each dye comes late
    std::array<std::array<double, 4>, 4> mixing{{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}};
    double baseline = 0, noise = 0, height = 2000, limit = 1e9;
};

inline TestChannels SyntheticRead(const Ways& ways, std::string* truth = nullptr) {
    std::mt19937 chance(7);
    const auto share = [&] { return chance() / 4294967296.0; };
    std::vector<std::array<double, 4>> dyes(900 + static_cast<std::size_t>(ways.bases * (ways.spacing + ways.drift)));
    double scan = 500;
    for (int i = 0; i < ways.bases; ++i) {
        const std::size_t dye = chance() % 4;
        if (truth) *truth += "ACTG"[dye];
        const double height = ways.height * (0.7 + 0.6 * share()), centre = scan + ways.shifts[dye];
        for (int s = static_cast<int>(centre) - 20; s < centre + 20; ++s)
            dyes[static_cast<std::size_t>(s)][dye] += height * std::exp(-std::pow((s - centre) / 3.6, 2) / 2);
        scan += ways.spacing + ways.drift * i / ways.bases;
    }
    TestChannels channels;
    for (const auto& dye : dyes)
        for (std::size_t c = 0; c < 4; ++c) {
            double value = ways.baseline + ways.noise * (share() + share() + share() - 1.5) * 2;
            for (std::size_t k = 0; k < 4; ++k)
                value += ways.mixing[c][k] * dye[k];
            channels[c].push_back(std::min(value, ways.limit));
        }
    return channels;
}
