// SPDX-License-Identifier: MIT
// What the raw curves of a called sample show: signal, noise, saturation. docs/summary.md defines the figures.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "lanetools/samples/Stretch.h"
#include "samplestore/SampleInfo.h"
#include "samplestore/ScanRecord.h"

namespace lanetools {

// Where the bases of a sample are.
struct CCalledPlaces {
    std::vector<std::int32_t> scans;            // of each base, in the raw curves; any number
    std::string letters;                        // as many
    CStretch good;                              // of the bases
    std::array<char, channelCount> channels{};  // the letter of each channel
};

// Of a called sample.
CCalledPlaces PlacesOf(const CSampleInfo& info);

struct CRawFigures {
    std::optional<double> signal, noise;          // in counts; absent without a base in the good region
    std::array<double, channelCount> heights{};   // median height of a channel's own bases there; 0 for fewer than 10
    double saturated = 0;                         // part (0 to 1) of the scans of the good region
    std::size_t scansAfter = 0, scansBefore = 0;  // of the run, after and before the good region
};

// `raw` are the scans of the raw sample.
CRawFigures MeasureRaw(const CCalledPlaces& places, std::span<const ScanRecord> raw);

}  // namespace lanetools
