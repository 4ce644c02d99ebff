// How wide a single peak is along the run.
#pragma once

#include "lanecall/Spacing.h"

namespace lanecall {

// Standard deviation, in scans, of the Gaussian that a lone peak resembles, from the narrower of the peaks nearby; 0.35
// spacings where fewer than six can be measured.
CTrack EstimateWidth(const Curves& curves, const ImpulseLists& impulses, const Spacing& spacing);

}  // namespace lanecall
