// SPDX-License-Identifier: MIT
// Bases that the base caller excludes from every sequence.
#pragma once

#include <cstddef>
#include <cstdint>

#include "samplestore/SampleInfo.h"

namespace lanetools {

inline constexpr std::int32_t hiddenDescriptor = 2;

// `base` counts from 0 and is below basesCalled of a called sample.
inline bool IsHidden(const CAnalysisInfo& analysis, std::size_t base) {
    return base < analysis.descriptors.size() && analysis.descriptors[base] == hiddenDescriptor;
}

}  // namespace lanetools
