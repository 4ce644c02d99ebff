// SPDX-License-Identifier: MIT
#include "lanetools/samples/CallFigures.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

#include "lanetools/samples/Phred.h"

namespace lanetools {

namespace {

constexpr std::size_t halfWindow = 10;
constexpr double goodMean = 20;

using Zones = std::array<std::vector<std::int32_t>, channelCount>;

std::optional<double> MeanOfZones(const CAnalysisInfo& analysis, const Zones& zones) {
    const auto stored = static_cast<std::size_t>(std::max(analysis.snZoneCount, 0));
    double sum = 0;
    std::size_t count = 0;
    for (const auto& channel : zones)
        for (std::size_t i = 0; i < std::min(stored, channel.size()); ++i, ++count)
            sum += channel[i];
    return count > 0 ? std::optional(sum / static_cast<double>(count)) : std::nullopt;
}

}  // namespace

CStretch GoodRegion(const CAnalysisInfo& analysis) {
    const std::int64_t first = std::max<std::int64_t>(analysis.startGood, 0);
    const std::int64_t end = std::min<std::int64_t>(std::int64_t{analysis.endGood} + 1, analysis.basesCalled);
    if (end <= first) return {};
    return {static_cast<std::size_t>(first), static_cast<std::size_t>(end - first)};
}

std::int64_t CountAtLeast(std::span<const float> qualities, double phred) {
    return std::count_if(qualities.begin(), qualities.end(),
                         [phred](float percent) { return IsAtLeast(Phred(percent), phred); });
}

std::int64_t ContiguousReadLength(std::span<const float> qualities) {
    std::vector<double> phreds(qualities.size());
    std::transform(qualities.begin(), qualities.end(), phreds.begin(), Phred);
    std::int64_t longest = 0, run = 0;
    for (std::size_t i = 0; i < phreds.size(); ++i) {
        const std::size_t first = i - std::min(i, halfWindow), end = std::min(i + halfWindow + 1, phreds.size());
        // Summed again for each base: the errors of a running sum would grow beyond the allowance.
        double sum = 0;
        for (std::size_t j = first; j < end; ++j)
            sum += phreds[j];
        run = IsAtLeast(sum / static_cast<double>(end - first), goodMean) ? run + 1 : 0;
        longest = std::max(longest, run);
    }
    return longest;
}

std::optional<double> MeanPhred(std::span<const float> qualities) {
    if (qualities.empty()) return std::nullopt;
    double sum = 0;
    for (const float percent : qualities)
        sum += Phred(percent);
    return sum / static_cast<double>(qualities.size());
}

std::optional<double> MeanSignal(const CAnalysisInfo& analysis) {
    return MeanOfZones(analysis, analysis.snSignal);
}

std::optional<double> MeanNoise(const CAnalysisInfo& analysis) {
    return MeanOfZones(analysis, analysis.snNoise);
}

}  // namespace lanetools
