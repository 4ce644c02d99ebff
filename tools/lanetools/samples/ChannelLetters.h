// SPDX-License-Identifier: MIT
// Which base each channel of a sample shows.
#pragma once

#include <string>

#include "samplestore/SampleInfo.h"

namespace lanetools {

// The letters of channels 1 to 4; 'N' for one that is not a capital letter.
inline std::string ChannelLetters(const CSampleInfo& info) {
    std::string letters;
    for (const auto& base : info.channelBase)
        letters += base[0] >= 'A' && base[0] <= 'Z' ? base[0] : 'N';
    return letters;
}

}  // namespace lanetools
