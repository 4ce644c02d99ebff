// The separation matrix as the sample itself shows it.
#pragma once

#include "lanecall/Impulses.h"

namespace lanecall {

// From peaks that one dye makes alone: the ratios in which such a peak shows in the other channels. The diagonal is 1.
// Takes bend curves, which a baseline cannot spoil, and their tops.
Matrix EstimateSeparation(const Curves& bends, const ImpulseLists& impulses);

}  // namespace lanecall
