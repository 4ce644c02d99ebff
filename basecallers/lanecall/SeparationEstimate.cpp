// SPDX-License-Identifier: MIT
#include "lanecall/SeparationEstimate.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <optional>
#include <vector>

#include "lanecall/Separation.h"
#include "lanecall/Smoothing.h"

namespace lanecall {

namespace {

using Ratios = std::array<std::array<std::vector<double>, channelCount>, channelCount>;

std::vector<PerChannel> HeightsAt(const Curves& bends, const ImpulseLists& impulses) {
    constexpr double strong = 0.4;  // weight of a usual peak is 1; smaller ones are mostly other dyes' light
    std::vector<PerChannel> heights;
    for (const auto& list : impulses)
        for (const Impulse& impulse : list) {
            if (impulse.weight < strong) continue;
            PerChannel one{};
            for (std::size_t c = 0; c < channelCount; ++c)
                one[c] = Interpolate(bends[c], impulse.scan);
            heights.push_back(one);
        }
    return heights;
}

std::size_t Dominant(const PerChannel& heights) {
    return static_cast<std::size_t>(std::max_element(heights.begin(), heights.end()) - heights.begin());
}

// The most frequent value: the middle of the shortest interval that holds a given share of the values. Lone peaks have
// about the same ratio, overlapping ones scatter.
double MostFrequent(std::vector<double> values) {
    constexpr double share = 0.35;  // of the values, by trial
    std::sort(values.begin(), values.end());
    const auto held = static_cast<std::size_t>(share * static_cast<double>(values.size()));
    std::size_t best = 0;
    for (std::size_t i = 0; i + held < values.size(); ++i)
        if (values[i + held] - values[i] < values[best + held] - values[best]) best = i;
    return values[best + held / 2];
}

// For each dye: the relative heights, after separation, of its peaks in the other channels.
Ratios RemainingRatios(const std::vector<PerChannel>& heights, const Matrix& inverse) {
    Ratios ratios;
    for (const PerChannel& seen : heights) {
        PerChannel apart{};
        for (std::size_t c = 0; c < channelCount; ++c)
            for (std::size_t k = 0; k < channelCount; ++k)
                apart[c] += inverse[c][k] * seen[k];
        const std::size_t dye = Dominant(apart);
        if (!(apart[dye] > 0)) continue;
        for (std::size_t c = 0; c < channelCount; ++c)
            ratios[c][dye].push_back(apart[c] / apart[dye]);
    }
    return ratios;
}

}  // namespace

Matrix EstimateSeparation(const Curves& bends, const ImpulseLists& impulses) {
    constexpr int rounds = 6;             // at most
    constexpr double settled = 0.003;     // the rounds end when no element changes by more
    constexpr std::size_t minPeaks = 20;  // 7 of them in the interval of MostFrequent
    constexpr double maxElement = 0.95;   // a dye is brightest in its own channel
    const std::vector<PerChannel> heights = HeightsAt(bends, impulses);
    Matrix matrix = Identity();
    for (int round = 0; round < rounds; ++round) {
        const auto inverse = Invert(matrix);
        if (!inverse) return Identity();
        const Ratios ratios = RemainingRatios(heights, *inverse);
        Matrix change = Identity();
        for (std::size_t c = 0; c < channelCount; ++c)
            for (std::size_t dye = 0; dye < channelCount; ++dye)
                if (c != dye && ratios[c][dye].size() >= minPeaks) change[c][dye] = MostFrequent(ratios[c][dye]);
        double maxChange = 0;
        for (std::size_t c = 0; c < channelCount; ++c)
            for (std::size_t dye = 0; dye < channelCount; ++dye)
                if (c != dye) maxChange = std::max(maxChange, std::abs(change[c][dye]));
        Matrix next{};
        for (std::size_t c = 0; c < channelCount; ++c)
            for (std::size_t dye = 0; dye < channelCount; ++dye)
                for (std::size_t k = 0; k < channelCount; ++k)
                    next[c][dye] += matrix[c][k] * change[k][dye];
        for (std::size_t c = 0; c < channelCount; ++c)
            for (std::size_t dye = 0; dye < channelCount; ++dye)
                matrix[c][dye] = c == dye ? 1 : std::clamp(next[c][dye] / next[dye][dye], 0.0, maxElement);
        if (maxChange < settled) break;
    }
    return Invert(matrix) ? matrix : Identity();
}

}  // namespace lanecall
