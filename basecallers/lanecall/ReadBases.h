// SPDX-License-Identifier: MIT
// Last stage: calls the bases and judges how reliable each call is.
#pragma once

#include <vector>

#include "lanecall/Align.h"
#include "lanecall/CallBases.h"
#include "lanecall/CallFeatures.h"
#include "lanecall/Curves.h"
#include "lanecall/Quality.h"
#include "lanecall/Track.h"

namespace lanecall {

struct CalledRead {
    Curves curves;  // processed: a usual peak is 1 high, shifts of the dyes removed, not sharpened
    ScanRange range;
    std::vector<Call> calls;          // in the order of their scans
    std::vector<PerChannel> heights;  // of each call, of the four dyes' peaks there, see FitPeaks
    std::vector<double> qualities;    // of each call, the probability (0 to 1) that it is right
    GoodRegion good;
    CTrack widths;   // standard deviation of a lone peak, in scans
    CTrack spacing;  // in scans
};

struct MeasuredCalls {
    std::vector<Call> calls;
    std::vector<PerChannel> heights;     // as many as calls, see FitPeaks
    std::vector<CallFeatures> features;  // as many as calls
};

// Calls the whole range. The result includes calls before and after the read, where there is nothing to call.
MeasuredCalls CallAndMeasure(const Aligned& aligned);

// Throws CUnreadable if the calls are not a read, see RequireRead.
CalledRead ReadBases(Aligned aligned);

}  // namespace lanecall
