// How the distance between bases changes along a run: every run has the same curve, in its own scale and pace.
#pragma once

#include "lanecall/Curves.h"
#include "lanecall/Track.h"

namespace lanecall {

// The spacing in scans along the range, a knot every `stepScans`. `greatest` is the spacing where it is widest; `pace`
// says how much sooner than usual the run gets there (1 for one whose spacing is widest at base 400); `lead` is the
// scans of the range before the first base.
CTrack RunCurve(ScanRange range, double greatest, double pace, double lead, double stepScans);

}  // namespace lanecall
