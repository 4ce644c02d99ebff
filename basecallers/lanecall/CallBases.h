// The decision where the bases stand and which they are.
#pragma once

#include "lanecall/Curves.h"
#include "lanecall/Track.h"

namespace lanecall {

struct Call {
    double scan = 0;     // where the base stands, after the dyes' shifts were taken out
    int channel = -1;    // the channel with the strongest peak there
    double spacing = 0;  // the distance between bases hereabouts, in scans
};

// The row of bases that fits best: strong peaks are on it, and from base to base it keeps near a spacing that changes
// slowly and lies near the given one. `sharp` are sharpened curves in which a usual peak is about 1.
std::vector<Call> CallBases(const Curves& sharp, ScanRange range, const CTrack& spacing);

// The score of that row: the higher, the better bases stand on an even row. Rows over the same range compare.
double RowScore(const Curves& sharp, ScanRange range, const CTrack& spacing);

// Moves each call to the top of its peak, between scans, where one is near; the order of the calls stays, and
// none leaves the range.
void CentreCalls(std::vector<Call>& calls, const Curves& sharp, ScanRange range);

}  // namespace lanecall
