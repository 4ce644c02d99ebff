// Third stage: spacing, heights and widths of the peaks along the run.
#pragma once

#include "lanecall/SeparateDyes.h"
#include "lanecall/Spacing.h"

namespace lanecall {

struct Measured {
    Curves curves;  // a usual peak of each channel is 1 high
    ScanRange range;
    Spacing spacing;
    CTrack widths;        // deviation of a lone peak, in scans
    ChannelTracks noise;  // deviation where a usual peak is 1
};

// Throws CUnreadable for a read that shows too few peaks.
Measured Measure(Separated separated);

}  // namespace lanecall
