// SPDX-License-Identifier: MIT
// A read as it is exported.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "lanetools/samples/SampleRow.h"

namespace lanetools {

struct CRead {
    std::string title;                    // one word, UTF-8; in a file no two are equal
    std::string letters;                  // IUPAC; lower case where they are masked
    std::vector<std::uint8_t> phreds;     // 0 to 93, one per letter
    std::vector<std::int32_t> positions;  // scans of the processed trace from 0, one per letter

    CSampleRow row;             // what the summary says of its sample
    std::int32_t runStart = 0;  // seconds since 1 January 1970, 0 for none
    std::int64_t scans = 0;     // of the processed trace
};

}  // namespace lanetools
