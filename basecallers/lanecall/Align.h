// SPDX-License-Identifier: MIT
// Fourth and fifth stage: narrows the peaks, then moves the dyes so that the peaks of all letters are evenly spaced.
#pragma once

#include "lanecall/Curves.h"
#include "lanecall/Measure.h"
#include "lanecall/Prepare.h"
#include "lanecall/Spacing.h"
#include "lanecall/Track.h"

namespace lanecall {

struct Sharpened {
    Curves curves;    // those of Measured
    Curves sharp;     // the same with narrower peaks
    ScanRange range;  // of the read
    Spacing spacing;
    CTrack widths;        // standard deviation of a lone peak of `curves`, in scans
    ChannelTracks noise;  // standard deviation in `curves`, relative to a usual peak
};

// The same data after the shifts of the dyes have been removed from both sets of curves.
using Aligned = Sharpened;

Sharpened SharpenPeaks(Measured measured);
// `letters` are those of channels 1 to 4; with them the shifts of known chemistries can be tried.
Aligned Align(Sharpened sharpened, const Letters& letters);

}  // namespace lanecall
