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

// Adds the curves with narrower peaks to what was measured.
Sharpened SharpenPeaks(Measured measured);
// Moves both sets of curves; `letters` name the dyes of the known chemistries.
Aligned Align(Sharpened sharpened, const Letters& letters);

}  // namespace lanecall
