// Taking over the raw trace, and what can be measured of it before any work.
#pragma once

#include "lanecall/Curves.h"

namespace lanecall {

// Copies four arrays of `scans` values. Values that are no numbers become 0, values beyond any detector are cut.
Curves TakeCurves(const double* const* arrays, int scans);

// Share (0 to 1) of the range's scans in which some channel lies flat at its greatest value for three scans or more.
double SaturatedShare(const Curves& curves, ScanRange range);

// Typical difference of neighbouring scans that is no signal, in the curve's units.
double NoiseOf(const Curve& curve, ScanRange range);
// The same where the trace is quietest: under the peaks of a strong read the noise is that of the light itself.
double QuietNoise(const Curve& curve);

}  // namespace lanecall
