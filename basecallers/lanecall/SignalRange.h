// SPDX-License-Identifier: MIT
// Finds the read in the run.
#pragma once

#include "lanecall/Curves.h"

namespace lanecall {

enum class SignalPart {
    whole,    // all that stands above the noise
    tallest,  // of that, the part three times as high as its median: a short read in a run with a wavy baseline
};

// The stretch in which peaks stand above the noise, even if they are much lower than elsewhere: the one with the
// greatest sum of log(height / limit), where the limit is four times the noise and at least 0.2 % of the greatest
// height. `curves` have no baseline; `noise` is the standard deviation of each channel's noise, in the unit of the
// curves. Empty if nothing stands out. The result is a block of 50 scans longer at either end.
ScanRange FindSignal(const Curves& curves, const PerChannel& noise, SignalPart part);

}  // namespace lanecall
