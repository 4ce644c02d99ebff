// The four dyes slow their fragments differently, so the peaks of one channel come early or late against the others.
#pragma once

#include "lanecall/Prepare.h"
#include "lanecall/Spacing.h"

namespace lanecall {

// The scans by which each channel's peaks come late, average 0: those of a known chemistry or free ones, whichever puts
// the peaks of `sharp` on the best row. No tracks without a spacing.
ChannelTracks EstimateMobility(const Curves& sharp, ScanRange range, const Spacing& spacing, const Letters& letters);
// Moves every peak of the range to the scan at which it would be without its dye's shift.
void ShiftCurves(Curves& curves, ScanRange range, const ChannelTracks& shifts);

}  // namespace lanecall
