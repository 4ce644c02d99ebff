// SPDX-License-Identifier: MIT
// Decides where the bases are and which letter each is.
#pragma once

#include <vector>

#include "lanecall/Curves.h"
#include "lanecall/Track.h"

namespace lanecall {

struct Call {
    double scan = 0;     // position of the base in the aligned curves
    int channel = -1;    // 0 to 3, the channel that is highest there
    double spacing = 0;  // distance between bases near this one, in scans
};

// The row of bases with the highest score. A base on a strong peak adds to the score; an uneven gap, a peak without a
// base, and a spacing that changes or differs from the given one (in scans) reduce it. `sharp` are sharpened curves in
// which a usual peak is about 1 high.
std::vector<Call> CallBases(const Curves& sharp, ScanRange range, const CTrack& spacing);

// That score, found by a coarser and faster search. Only scores over the same range can be compared.
double RowScore(const Curves& sharp, ScanRange range, const CTrack& spacing);

// Moves each call to the top of its peak, which may lie between scans, if there is a top within 0.3 of the gaps to its
// neighbours. The calls stay in order and within the range.
void CentreCalls(std::vector<Call>& calls, const Curves& sharp, ScanRange range);

}  // namespace lanecall
