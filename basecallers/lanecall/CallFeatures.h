// SPDX-License-Identifier: MIT
// The features of a call from which its quality is computed.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "lanecall/CallBases.h"
#include "lanecall/Curves.h"
#include "lanecall/Track.h"

namespace lanecall {

enum class Feature {
    rival,        // height of the tallest other channel at the call, relative to the call's own
    rivalNear,    // the greatest `rival` of this call and of two calls to either side
    rivalAround,  // the mean `rival` of this call and of ten calls to either side
    rivalRaw,     // `rival` before the peaks were sharpened
    height,       // own height, relative to the mean of ten calls to either side
    gap,          // how far the more uneven of the two gaps differs from the spacing, in spacings
    unevenness,   // mean of that over the gaps between four calls to either side
    resolution,   // standard deviation of a lone peak, in spacings
    noise,        // standard deviation of the channel's noise, relative to a usual peak
    valley,       // lowest point between this call and a neighbour of the same letter, relative to the lower of the two
    passed,       // height of the tallest third letter half-way to a neighbour, relative to the lower of the two
    second,       // height of the second letter in the fit of lone peaks, relative to the call's own
    count
};

constexpr std::size_t featureCount = static_cast<std::size_t>(Feature::count);
using CallFeatures = std::array<double, featureCount>;

// What the features are measured on: references to parts of an Aligned read, valid during the call of MeasureCalls.
struct CallSurroundings {
    const Curves& curves;                    // before sharpening
    const Curves& sharp;                     // after sharpening
    const CTrack& widths;                    // standard deviation of a lone peak, in scans
    const ChannelTracks& noise;              // standard deviation relative to a usual peak
    const std::vector<PerChannel>& heights;  // of each call, see FitPeaks
};

// The features of each call, in the order of the calls.
std::vector<CallFeatures> MeasureCalls(const std::vector<Call>& calls, const CallSurroundings& around);

}  // namespace lanecall
