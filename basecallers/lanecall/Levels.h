// Heights: the usual peak of every channel is brought to 1, so that the letters compare.
#pragma once

#include "lanecall/Impulses.h"
#include "lanecall/Track.h"

namespace lanecall {

// Usual height of a channel's peaks at a scan, above 0: what all channels share of it changes fast, the shares of the
// channels slowly. `noise` is the deviation of each channel's noise in the unit of the curves; no level is so low that
// noise would look like a peak. A channel without peaks gets the level of the others.
ChannelTracks EstimateLevels(const Curves& curves, const ImpulseLists& impulses, ScanRange range,
                             const PerChannel& noise);
void DivideByLevels(Curves& curves, const ChannelTracks& levels);

}  // namespace lanecall
