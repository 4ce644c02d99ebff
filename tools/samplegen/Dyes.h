// SPDX-License-Identifier: MIT
// The four dyes: their signal in each channel and how they slow their fragments. A dye has the index of the channel
// that is meant to detect it, so index 0 is the dye of channel 1.
#pragma once

#include <array>
#include <string>

#include "samplestore/SampleInfo.h"

namespace samplegen {

struct Dye {
    const char* name;
    const char* filter;  // of its channel
    double brightness;   // relative to that of the first dye
    double shift;        // of its peaks, relative to the greatest shift between dyes; above 0 they come later
};

const std::array<Dye, channelCount>& Dyes();

// The signal of each dye (column) in each channel (row), so channels = matrix x dyes. It is 1 in the dye's own channel,
// and `strength` times the usual in the others.
Matrix4 CrossTalk(double strength);

// The text of a dye matrix file. `baseOrder` has the letters of channels 1 to 4; rows are channels and columns are
// dyes, both in that order.
std::string DyeMatrixText(const std::string& baseOrder, const Matrix4& matrix);

}  // namespace samplegen
