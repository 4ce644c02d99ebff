// SPDX-License-Identifier: MIT
// Finds peaks and shoulders of a curve by its curvature, which separates peaks of one letter even where they merge.
#pragma once

#include <array>
#include <vector>

#include "lanecall/Curves.h"
#include "lanecall/Track.h"

namespace lanecall {

struct Impulse {
    double scan = 0;
    double weight = 0;  // height relative to the usual peaks nearby: about 1, at most 2
};

using ImpulseLists = std::array<std::vector<Impulse>, channelCount>;

// The bend curve: how sharply `curve` bends downward at each scan of the range, 0 outside. It is the curve filtered
// with the negative second derivative of a Gaussian, whose standard deviation in scans is `smoothing`. It is linear in
// the curve, ignores a straight baseline, and is scaled so that a usual peak has about its own height for any
// smoothing.
Curve Bend(const Curve& curve, ScanRange range, const CTrack& smoothing);
Curves Bend(const Curves& curves, ScanRange range, const ChannelTracks& smoothing);

// The tops of a bend curve in ascending order of scans.
std::vector<Impulse> FindImpulses(const Curve& bend, ScanRange range);
ImpulseLists FindImpulses(const Curves& bends, ScanRange range);

}  // namespace lanecall
