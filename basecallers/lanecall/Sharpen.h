// Narrowing of the peaks, so that neighbours that run together show as peaks of their own.
#pragma once

#include "lanecall/Curves.h"
#include "lanecall/Track.h"

namespace lanecall {

// Brings peaks of the given widths (deviations in scans) towards a fixed share of the spacing and keeps the height of a
// lone one. `noise` is the deviation of the noise where a usual peak is 1: the more noise, the less is sharpened.
// Nothing falls below 0.
Curve Sharpen(const Curve& curve, ScanRange range, const CTrack& widths, const CTrack& spacing, const CTrack& noise);

}  // namespace lanecall
