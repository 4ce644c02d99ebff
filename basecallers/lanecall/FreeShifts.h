// The dyes' shifts of a chemistry that is not known.
#pragma once

#include "lanecall/Rhythm.h"

namespace lanecall {

// The scans by which the peaks of each channel come late against the channel with the clearest rhythm, as the angles of
// their rhythms say it. An angle is known only up to a whole spacing: of the spacings nearby that one counts by which
// the peaks of `part` collide least.
ChannelTracks FreeShifts(const ImpulseLists& impulses, ScanRange part, const Phasors& phasors, const Spacing& spacing);

}  // namespace lanecall
