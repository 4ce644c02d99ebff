// SPDX-License-Identifier: MIT
// Finds the spacing, the distance from base to base in scans, along the run. The peaks of each channel are examined
// separately, so shifts between the channels do not matter.
#pragma once

#include "lanecall/Curves.h"
#include "lanecall/Impulses.h"
#include "lanecall/Track.h"

namespace lanecall {

struct Spacing {
    CTrack scans;       // the spacing along the run, in scans; empty if it was not found
    CTrack regularity;  // about 1 where the peaks have no rhythm, greater the more regular they are
    bool found = false;
};

// The run curve (see RunCurve.h) whose rhythm is strongest in the peaks of the whole read. A curve that is rare in real
// runs needs stronger evidence.
CTrack FindRunCurve(const ImpulseLists& impulses, ScanRange range);

// The spacing that the peaks show. It departs from the expected one slowly, and stays between 0.7 and 1.5 times of it.
// Not found with fewer than eight peaks.
Spacing FollowSpacing(const ImpulseLists& impulses, ScanRange range, const CTrack& expected);

}  // namespace lanecall
