// Fourth and fifth stage: the peaks are narrowed, then the dyes are brought onto one row.
#pragma once

#include "lanecall/Measure.h"

namespace lanecall {

struct Sharpened {
    Curves curves;  // as measured
    Curves sharp;   // the same, with narrower peaks
    ScanRange range;
    Spacing spacing;
    CTrack widths;
    ChannelTracks noise;
};

// Its peaks stand where they would without their dyes' shifts.
using Aligned = Sharpened;

Sharpened SharpenPeaks(Measured measured);
Aligned Align(Sharpened sharpened, const Letters& letters);

}  // namespace lanecall
