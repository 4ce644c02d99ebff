// How wide a single peak is along the run.
#pragma once

#include "lanecall/Spacing.h"

namespace lanecall {

// Standard deviation, in scans, of the Gaussian that a lone peak resembles. Constant 0.35 spacings where no peak stands
// alone.
CTrack EstimateWidth(const Curves& curves, const ImpulseLists& impulses, const Spacing& spacing);

}  // namespace lanecall
