// SPDX-License-Identifier: MIT
// Fits the curves as sums of lone peaks: how much of each dye there is at a call, apart from the flanks of its
// neighbours.
#pragma once

#include <vector>

#include "lanecall/CallBases.h"
#include "lanecall/Curves.h"
#include "lanecall/Humps.h"
#include "lanecall/Track.h"

namespace lanecall {

// The heights of the four channels' peaks at each call, 0 or more, relative to a usual peak. With them the sum of the
// peaks at the scans of the calls comes closest to `flat` (least squares, less a small height that is in doubt). A peak
// is a Gaussian of deviation `widths`, in scans, after `filter`, with which `flat` was made.
std::vector<PerChannel> FitPeaks(const Curves& flat, const std::vector<Call>& calls, const CTrack& widths,
                                 const HumpFilter& filter);

// Gives a call the letter of the greatest height if that is clearly greater than its own.
void CorrectLetters(std::vector<Call>& calls, const std::vector<PerChannel>& heights);

}  // namespace lanecall
