// How far each call can be trusted.
#pragma once

#include "lanecall/CallBases.h"

namespace lanecall {

// One fraction a call, 0 to 1: high for an even spacing, a strong peak and nothing of the other letters under it; a bad
// neighbourhood pulls it down. `sharp` as for CallBases.
std::vector<double> JudgeCalls(const std::vector<Call>& calls, const Curves& sharp);

// First and last call of the stretch worth keeping: the greatest sum of quality less a middling one. Both 0 when there
// are no calls; the first call alone when none is worth keeping.
struct GoodRegion {
    int first = 0;
    int last = 0;
};
GoodRegion FindGoodRegion(const std::vector<double>& qualities);

// Mean quality of the region, 0 without calls.
double OverallQuality(const std::vector<double>& qualities, GoodRegion region);

}  // namespace lanecall
