// SPDX-License-Identifier: MIT
// Broad humps under the peaks, such as blobs of free dye: several bases wide and of one dye, they would be taken for
// its letter. A part of the running mean is subtracted from the curves, which lowers a hump by that part and a peak
// little.
#pragma once

#include "lanecall/Curves.h"
#include "lanecall/Track.h"

namespace lanecall {

struct HumpFilter {
    CTrack part;           // of the running mean that is subtracted, 0 to 1
    double deviation = 1;  // of the running mean, which is nearly a Gaussian, in scans
};

// The filter for a read: `widths` are the standard deviations of a lone peak, `spacing` has as many knots; both in
// scans. Where the peaks of one letter merge, their sum is as broad as a hump, so nothing is subtracted there.
HumpFilter HumpFilterFor(const CTrack& widths, const CTrack& spacing);

// `curve` after the filter.
Curve WithoutHumps(const Curve& curve, const HumpFilter& filter);

}  // namespace lanecall
