// How far each call can be trusted.
#pragma once

#include "lanecall/CallFeatures.h"

namespace lanecall {

// The probability that each call is right, 0 to 1: the model of QualityTable.h over what was measured of the call.
std::vector<double> JudgeCalls(const std::vector<CallFeatures>& features);

// Bases from `first` up to but not including `end`.
struct BaseRange {
    int first = 0;
    int end = 0;
    int Count() const { return end - first; }
};

// The stretch with the greatest sum of (quality - limit), the first of equals; empty where no base is above the limit.
BaseRange BestStretch(const std::vector<double>& qualities, double limit);

// First and last call of the stretch worth keeping, as trimming by Mott finds it: the greatest sum of (0.05 - error
// probability). Both 0 when there are no calls; the first call alone when none is worth keeping.
struct GoodRegion {
    int first = 0;
    int last = 0;
};
GoodRegion FindGoodRegion(const std::vector<double>& qualities);

// Mean quality of the region, 0 without calls.
double OverallQuality(const std::vector<double>& qualities, GoodRegion region);

}  // namespace lanecall
