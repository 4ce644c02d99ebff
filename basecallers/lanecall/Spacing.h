// The distance from base to base along the run, in scans.
#pragma once

#include "lanecall/Impulses.h"
#include "lanecall/Track.h"

namespace lanecall {

struct Spacing {
    CTrack scans;       // spacing at a scan
    CTrack regularity;  // about 1 where the peaks give no rhythm, the greater the clearer it is
    bool found = false;
};

constexpr double shortestSpacing = 4.5, longestSpacing = 26;  // of any run, in scans

// The rhythm is looked for in each channel by itself, so shifts between the channels do not matter. The spacing of the
// read as a whole lies between `shortest` and `longest`, which are above 0.
Spacing EstimateSpacing(const ImpulseLists& impulses, ScanRange range, double shortest = shortestSpacing,
                        double longest = longestSpacing);

}  // namespace lanecall
