// SPDX-License-Identifier: MIT
// Chooses how much a curve is smoothed before its peaks are searched, depending on its noise.
#pragma once

#include "lanecall/Curves.h"
#include "lanecall/Track.h"

namespace lanecall {

// The smoothing of each channel along `range`, as a standard deviation in scans, between `min` and `max` (in scans
// too). The higher the noise is in relation to the peaks, the stronger is the smoothing. `noise` is the standard
// deviation of each channel's noise, in the unit of the curves.
ChannelTracks SmoothingFor(const Curves& curves, ScanRange range, const PerChannel& noise, const CTrack& min,
                           const CTrack& max);

}  // namespace lanecall
