// SPDX-License-Identifier: MIT
// Finds the read in the run.
#pragma once

#include "lanecall/Curves.h"

namespace lanecall {

// The longest stretch in which peaks stand above the noise, even if they are much lower than elsewhere. `curves` have
// no baseline; `noise` is the standard deviation of each channel's noise, in the unit of the curves. Empty if nothing
// stands out. The result is a block of 50 scans longer at either end.
ScanRange FindSignal(const Curves& curves, const PerChannel& noise);

}  // namespace lanecall
