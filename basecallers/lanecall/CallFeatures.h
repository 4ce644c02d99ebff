// What can be seen of a call that says how far it can be trusted.
#pragma once

#include <array>
#include <string_view>
#include <vector>

#include "lanecall/CallBases.h"
#include "lanecall/Track.h"

namespace lanecall {

enum class Feature {
    rival,        // tallest other letter under the call, share of its own height
    rivalNear,    // the worst of that over two calls to either side
    rivalAround,  // its mean over ten calls to either side
    rivalRaw,     // the same as `rival` before the peaks were sharpened
    height,       // own height against the mean of ten calls to either side
    gap,          // the more uneven of the two gaps: its departure from the spacing, in spacings
    unevenness,   // mean departure of the gaps over four calls to either side
    resolution,   // deviation of a lone peak, in spacings
    noise,        // deviation of the channel's noise where a usual peak is 1
    valley,       // lowest point towards a neighbour of the same letter, share of the smaller of the two
    passed,       // tallest third letter half-way to a neighbour, share of the smaller of the two
    count
};

constexpr std::size_t featureCount = static_cast<std::size_t>(Feature::count);
using CallFeatures = std::array<double, featureCount>;

struct CallSurroundings {
    const Curves& curves;  // levelled
    const Curves& sharp;   // the same, sharpened
    const CTrack& widths;
    const ChannelTracks& noise;
};

std::vector<CallFeatures> MeasureCalls(const std::vector<Call>& calls, const CallSurroundings& around);

}  // namespace lanecall
