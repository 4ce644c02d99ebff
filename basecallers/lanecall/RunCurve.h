// SPDX-License-Identifier: MIT
// How the spacing of the bases changes along a run. All runs have the same curve, each with its own scale and pace.
#pragma once

#include "lanecall/Curves.h"
#include "lanecall/Track.h"

namespace lanecall {

// The spacing in scans along the range, with a knot every `stepScans` scans. `widest` is the widest spacing, in
// scans; a run of pace 1 reaches it at base 400, one of pace 2 at base 200; `lead` is the number of scans before the
// first base.
CTrack RunCurve(ScanRange range, double widest, double pace, double lead, double stepScans);

}  // namespace lanecall
