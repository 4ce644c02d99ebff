// SPDX-License-Identifier: MIT
// A copy of a raw trace in the form that a library takes.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>

#include "samplestore/CapTrace.h"
#include "samplestore/SampleInfo.h"

class CRawArrays {
  public:
    // Throws std::bad_alloc, also when there are more scans than a 32-bit count can express.
    explicit CRawArrays(const CCapTrace& raw);

    // 5 arrays of Scans() values: channels 1 to 4 and the current. A library may change the values and the pointers.
    double** Pointers() { return pointers.data(); }
    std::int32_t Scans() const { return scans; }

  private:
    static constexpr std::size_t arrayCount = channelCount + 1;
    std::int32_t scans;
    std::unique_ptr<double[]> values;
    std::array<double*, arrayCount> pointers{};
};
