// The distance from base to base along the run, in scans. The rhythm is looked for in each channel by itself, so shifts
// between the channels do not matter.
#pragma once

#include "lanecall/Impulses.h"
#include "lanecall/Track.h"

namespace lanecall {

struct Spacing {
    CTrack scans;       // spacing at a scan
    CTrack regularity;  // about 1 where the peaks give no rhythm, the greater the clearer it is
    bool found = false;
};

// The spacing of the run curve (see RunCurve.h) whose rhythm the peaks of the whole read show most. Curves that real
// runs do not have need the stronger evidence.
CTrack FindRunCurve(const ImpulseLists& impulses, ScanRange range);

// The rhythm near the expected spacing: it departs from it slowly and by a third at most. Not found with fewer than
// eight peaks.
Spacing FollowSpacing(const ImpulseLists& impulses, ScanRange range, const CTrack& expected);

}  // namespace lanecall
