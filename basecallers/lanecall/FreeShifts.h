// SPDX-License-Identifier: MIT
// Estimates the shifts of the dyes when the chemistry is not known.
#pragma once

#include "lanecall/Curves.h"
#include "lanecall/Impulses.h"
#include "lanecall/Rhythm.h"
#include "lanecall/Spacing.h"
#include "lanecall/Track.h"

namespace lanecall {

// By how many scans the peaks of each channel come later than those of the channel with the clearest rhythm, from the
// angles between their rhythms. An angle does not show whole spacings, so a channel may be off by one: of -1, 0 and 1
// spacing per channel the combination is taken with which the peaks of `part` overlap least.
ChannelTracks FreeShifts(const ImpulseLists& impulses, ScanRange part, const Phasors& phasors, const Spacing& spacing);

}  // namespace lanecall
