// SPDX-License-Identifier: MIT
// Makes the peaks narrower, so that neighbours that have merged become separate peaks.
#pragma once

#include "lanecall/Curves.h"
#include "lanecall/Track.h"

namespace lanecall {

// Narrows peaks of the given widths (standard deviations in scans) towards 0.22 of the spacing (in scans) and keeps the
// height of a lone peak. `noise` is the standard deviation of the noise relative to a usual peak: the more noise, the
// less the peaks are narrowed. Negative values become 0, and so does everything outside `range`.
Curve Sharpen(const Curve& curve, ScanRange range, const CTrack& widths, const CTrack& spacing, const CTrack& noise);

}  // namespace lanecall
