// SPDX-License-Identifier: MIT
// Scales the channels so that a usual peak is 1 high in each, which makes their heights comparable.
#pragma once

#include "lanecall/Curves.h"
#include "lanecall/Impulses.h"
#include "lanecall/Track.h"

namespace lanecall {

// The usual height of each channel's peaks along the range, above 0, in the unit of the curves. It is the product of a
// height common to all channels, which may change fast, and of each channel's share in it, which changes slowly.
// `noise` is the standard deviation of each channel's noise, in the same unit: no level is below 4 times the noise, so
// noise never becomes as high as a usual peak. A channel without peaks has the level of the others.
ChannelTracks EstimateLevels(const Curves& curves, const ImpulseLists& impulses, ScanRange range,
                             const PerChannel& noise);
// Divides each curve by its level.
void DivideByLevels(Curves& curves, const ChannelTracks& levels);

}  // namespace lanecall
