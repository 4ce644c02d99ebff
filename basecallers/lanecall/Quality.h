// SPDX-License-Identifier: MIT
// Qualities: the probability that each call is right, and the stretch of a read that is worth keeping.
#pragma once

#include <vector>

#include "lanecall/CallFeatures.h"

namespace lanecall {

// The probability (0 to 1) that each call is right, from the model of QualityTable.h.
std::vector<double> JudgeCalls(const std::vector<CallFeatures>& features);

// Bases from `first` up to but not including `end`.
struct BaseRange {
    int first = 0;
    int end = 0;
    int Count() const { return end - first; }
};

// The stretch with the greatest sum of (quality - limit), the first one if several are equal. Empty if no quality is
// above the limit.
BaseRange BestStretch(const std::vector<double>& qualities, double limit);

// Indices of the first and the last call worth keeping, found by Mott's trimming: the stretch with the greatest sum of
// (0.05 - error probability). Both are 0 if there are no calls or none is worth keeping.
struct GoodRegion {
    int first = 0;
    int last = 0;
};
GoodRegion FindGoodRegion(const std::vector<double>& qualities);

// The sum of (0.05 - error probability) over the region: 0.05 for each base without any doubt. 0 without calls.
double TrustIn(const std::vector<double>& qualities, GoodRegion region);

// Mean quality (0 to 1) of the region, 0 without calls.
double OverallQuality(const std::vector<double>& qualities, GoodRegion region);

}  // namespace lanecall
