// Peaks and shoulders of a curve, found by curvature: they stand out even where peaks of one letter run together.
#pragma once

#include <vector>

#include "lanecall/Curves.h"
#include "lanecall/Track.h"

namespace lanecall {

struct Impulse {
    double scan = 0;
    double weight = 0;  // about 1 for a usual peak of this stretch of the curve, 2 at the most
};

using ImpulseLists = std::array<std::vector<Impulse>, channelCount>;

// How sharply a curve bends downward at each scan of the range: the second derivative of a Gaussian, upside down, as
// the filter. `smoothing` is its deviation in scans. Linear in the curve, blind to a straight baseline, and scaled so
// that a usual peak comes out about as high whatever the smoothing.
Curve Bend(const Curve& curve, ScanRange range, const CTrack& smoothing);
Curves Bend(const Curves& curves, ScanRange range, const ChannelTracks& smoothing);

// The tops of a bend curve, in rising order of scan.
std::vector<Impulse> FindImpulses(const Curve& bend, ScanRange range);
ImpulseLists FindImpulses(const Curves& bends, ScanRange range);

}  // namespace lanecall
