// SPDX-License-Identifier: MIT
// Third stage: spacing, heights and widths of the peaks along the run.
#pragma once

#include "lanecall/Curves.h"
#include "lanecall/SeparateDyes.h"
#include "lanecall/Spacing.h"
#include "lanecall/Track.h"

namespace lanecall {

struct Measured {
    Curves curves;    // scaled so that a usual peak of each channel is 1 high
    ScanRange range;  // of the read
    Spacing spacing;
    CTrack widths;        // standard deviation of a lone peak, in scans
    ChannelTracks noise;  // standard deviation, relative to a usual peak
};

// Throws CUnreadable for a read with fewer than eight peaks.
Measured Measure(Separated separated);

}  // namespace lanecall
