// SPDX-License-Identifier: MIT
// Fourth and fifth stage: removes broad humps and narrows the peaks, then moves the dyes so that the peaks of all
// letters are evenly spaced.
#pragma once

#include "lanecall/Curves.h"
#include "lanecall/Humps.h"
#include "lanecall/Measure.h"
#include "lanecall/Prepare.h"
#include "lanecall/Spacing.h"
#include "lanecall/Track.h"

namespace lanecall {

struct Sharpened {
    Curves curves;    // those of Measured
    Curves flat;      // the same without broad humps
    Curves sharp;     // the latter with narrower peaks
    ScanRange range;  // of the read
    Spacing spacing;
    CTrack widths;        // standard deviation of a lone peak of `curves`, in scans
    ChannelTracks noise;  // standard deviation in `curves`, relative to a usual peak
    HumpFilter filter;    // that `flat` was made with
};

// The same data after the shifts of the dyes have been removed from all curves.
using Aligned = Sharpened;

Sharpened SharpenPeaks(Measured measured);
// `letters` are those of channels 1 to 4; with them the shifts of known chemistries can be tried.
Aligned Align(Sharpened sharpened, const Letters& letters);

}  // namespace lanecall
