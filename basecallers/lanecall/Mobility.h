// The four dyes slow their fragments differently, so the peaks of one channel come early or late against the others.
#pragma once

#include "lanecall/Spacing.h"

namespace lanecall {

using ShiftTracks = std::array<CTrack, channelCount>;  // scans by which a channel's peaks come late

// The shifts that put the peaks of all channels on one even grid. They average 0 over the channels that have peaks.
ShiftTracks EstimateMobility(const ImpulseLists& impulses, const Spacing& spacing);
// Moves every peak of the range to the scan at which it would be without its dye's shift.
void ShiftCurves(Curves& curves, ScanRange range, const ShiftTracks& shifts);

}  // namespace lanecall
