// How much smoothing the noise asks for.
#pragma once

#include "lanecall/Curves.h"
#include "lanecall/Track.h"

namespace lanecall {

// Deviation in scans of the smoothing under which the peaks of each channel stand out from its noise, between `least`
// and `most`. `noise` is the deviation of each channel's noise in the unit of the curves.
ChannelTracks SmoothingFor(const Curves& curves, ScanRange range, const PerChannel& noise, const CTrack& least,
                           const CTrack& most);

}  // namespace lanecall
