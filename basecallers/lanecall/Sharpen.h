// Narrowing of the peaks, so that neighbours that run together show as peaks of their own.
#pragma once

#include "lanecall/Curves.h"
#include "lanecall/Track.h"

namespace lanecall {

// Brings peaks of the given widths (deviations in scans) to `targetShare` spacings. Heights keep their order of size
// but become comparable as areas; `noise` is the deviation of the noise where a usual peak is 1. Nothing falls below 0.
Curve Sharpen(const Curve& curve, ScanRange range, const CTrack& widths, const CTrack& spacing, double noise);

}  // namespace lanecall
