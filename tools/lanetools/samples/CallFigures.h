// SPDX-License-Identifier: MIT
// The figures of a base call. docs/summary.md defines them.
#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "lanetools/samples/Stretch.h"
#include "samplestore/SampleInfo.h"

namespace lanetools {

// The good region, cut to the bases that exist; empty if there is none.
CStretch GoodRegion(const CAnalysisInfo& analysis);
// How many bases of these qualities (in percent) have at least `phred`.
std::int64_t CountAtLeast(std::span<const float> qualities, double phred);
// The longest run of bases whose centred window of 21 bases, cut at the ends, has a mean Phred of 20 or more.
std::int64_t ContiguousReadLength(std::span<const float> qualities);
// Empty without qualities.
std::optional<double> MeanPhred(std::span<const float> qualities);
// Means over all zones and channels of what the sample stores of them; empty if it stores none.
std::optional<double> MeanSignal(const CAnalysisInfo& analysis);
std::optional<double> MeanNoise(const CAnalysisInfo& analysis);

}  // namespace lanetools
