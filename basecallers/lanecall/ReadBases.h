// Last stage: the bases, and how far each can be trusted.
#pragma once

#include <vector>

#include "lanecall/Align.h"
#include "lanecall/CallBases.h"
#include "lanecall/Quality.h"

namespace lanecall {

struct CalledRead {
    Curves curves;  // levelled and aligned
    ScanRange range;
    std::vector<Call> calls;
    std::vector<double> qualities;  // probability that each call is right
    GoodRegion good;
    CTrack widths, spacing;  // of the peaks and between the bases, in scans
};

struct MeasuredCalls {
    std::vector<Call> calls;
    std::vector<CallFeatures> features;  // of each call
};

// All calls of the range, those before and after the read included.
MeasuredCalls CallAndMeasure(const Aligned& aligned);

// Throws CUnreadable when nowhere enough bases in a row can be trusted: 10, and one in forty or so of those called.
CalledRead ReadBases(Aligned aligned);

}  // namespace lanecall
