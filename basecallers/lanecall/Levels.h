// Heights: the usual peak of every channel is brought to 1, so that the letters compare.
#pragma once

#include "lanecall/Impulses.h"
#include "lanecall/Track.h"

namespace lanecall {

using LevelTracks = std::array<CTrack, channelCount>;  // usual height of a channel's peaks at a scan; above 0

// A channel without peaks gets the level of the others, so that its noise is not blown up.
LevelTracks EstimateLevels(const Curves& curves, const ImpulseLists& impulses, ScanRange range);
void DivideByLevels(Curves& curves, const LevelTracks& levels);

}  // namespace lanecall
