// The four dyes: how they show in the channels and how they slow their fragments. A dye goes by the channel that it is
// meant for, so index 0 is the dye of channel 1.
#pragma once

#include <array>
#include <string>

#include "samplestore/SampleInfo.h"

namespace samplegen {

struct Dye {
    const char* name;
    const char* filter;  // of its channel
    double brightness;   // beside the other dyes
    double shift;        // of its peaks, as a part of the greatest shift between dyes; later when above 0
};

const std::array<Dye, channelCount>& Dyes();

// How far each dye shows in each channel: row = channel, column = dye, so channels = matrix x dyes. Each dye shows as 1
// in its own channel, and in the others `strength` times as much as usual.
Matrix4 CrossTalk(double strength);

// The matrix as the text of a dye matrix file. The four letters are those of the channels; rows and columns are in that
// order, rows being channels and columns being dyes.
std::string DyeMatrixText(const std::string& baseOrder, const Matrix4& matrix);

}  // namespace samplegen
