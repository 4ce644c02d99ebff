// SPDX-License-Identifier: MIT
// The four dyes slow their fragments differently, so the peaks of one letter come early or late in relation to others.
// This file finds these shifts and removes them.
#pragma once

#include "lanecall/Curves.h"
#include "lanecall/Prepare.h"
#include "lanecall/Spacing.h"
#include "lanecall/Track.h"

namespace lanecall {

// By how many scans each channel's peaks come late; the four shifts average 0 at every knot of the spacing. The shifts
// of each known chemistry and freely estimated ones are tried, and those win that make the peaks of the sharpened
// curves the most even row (see RowScore). Empty tracks if there is no spacing.
ChannelTracks EstimateMobility(const Curves& sharp, ScanRange range, const Spacing& spacing, const Letters& letters);
// Moves every peak of the range back by its channel's shift.
void ShiftCurves(Curves& curves, ScanRange range, const ChannelTracks& shifts);

}  // namespace lanecall
