// What the base call of a sample amounts to, in numbers. The definitions stand in docs/summary.md.
#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "samplestore/SampleInfo.h"

namespace lanetools {

// Bases from `start` on, counted from 0.
struct CBaseRange {
    std::size_t start = 0, length = 0;
};

// The good region, as far as there are bases; length 0 without one.
CBaseRange GoodRegion(const CAnalysisInfo& analysis);
// How many bases of these qualities (in percent) have at least `phred`.
std::int64_t CountAtLeast(std::span<const float> qualities, double phred);
// The longest run of bases whose centred window of 21 bases, cut at the ends, has a mean Phred of 20 or more.
std::int64_t ContiguousReadLength(std::span<const float> qualities);
// Nothing without qualities.
std::optional<double> MeanPhred(std::span<const float> qualities);
// Means over all zones and channels of what the sample stores of them; nothing when it stores none.
std::optional<double> MeanSignal(const CAnalysisInfo& analysis);
std::optional<double> MeanNoise(const CAnalysisInfo& analysis);

}  // namespace lanetools
