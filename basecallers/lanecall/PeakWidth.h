// SPDX-License-Identifier: MIT
// Measures the width of a single peak along the run.
#pragma once

#include "lanecall/Curves.h"
#include "lanecall/Impulses.h"
#include "lanecall/Spacing.h"
#include "lanecall/Track.h"

namespace lanecall {

// Standard deviation, in scans, of the Gaussian that a lone peak resembles. It is taken from the narrower peaks near
// each knot of the spacing, since a broad one may be two. Where fewer than six can be measured it is 0.35 spacings.
CTrack EstimateWidth(const Curves& curves, const ImpulseLists& impulses, const Spacing& spacing);

}  // namespace lanecall
