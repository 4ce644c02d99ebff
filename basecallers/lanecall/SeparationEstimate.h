// SPDX-License-Identifier: MIT
// Estimates the separation matrix from the sample itself.
#pragma once

#include "lanecall/Curves.h"
#include "lanecall/Impulses.h"

namespace lanecall {

// Uses peaks to which one dye alone contributes: their heights in the other channels, relative to the dye's own. Takes
// bend curves (see Impulses.h), which do not depend on the baseline, and their tops. The diagonal of the result is 1.
// An element for which there are fewer than 20 peaks is not estimated. The result can be inverted.
Matrix EstimateSeparation(const Curves& bends, const ImpulseLists& impulses);

}  // namespace lanecall
