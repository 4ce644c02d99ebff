// SPDX-License-Identifier: MIT
// The raw curves of an ABIF file as the scans of a sample.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "lanetools/import/AbifDirectory.h"
#include "samplestore/SampleInfo.h"
#include "samplestore/ScanRecord.h"

namespace lanetools {

// The most scans of one sample; a day at the highest scan rate has a third of them.
inline constexpr std::size_t mostScans = 1'000'000;

struct CRawSeries {
    std::vector<ScanRecord> scans;
    std::array<std::int64_t, channelCount> lifts{};  // what was added to each channel
    bool isCut = false;                              // the channels had different lengths
    bool isSaturated = false;                        // a value is the highest that the instrument records
};

// Channel i is DATA i, lifted by the smallest constant that makes all its values 0 or more, and cut to the shortest of
// the four. The current is DATA 6, which is recorded less often: scan i takes element i * n / scans, a negative one as
// 0; without it the current is 100. Throws CUnusable if a channel is missing, damaged, empty or too long.
CRawSeries ReadRawSeries(const CAbifDirectory& directory);

}  // namespace lanetools
