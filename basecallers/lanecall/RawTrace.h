// SPDX-License-Identifier: MIT
// Copies the raw trace and measures what can be measured before any processing: saturation and noise.
#pragma once

#include "lanecall/Curves.h"

namespace lanecall {

// Copies four arrays of `scans` values. A NaN becomes 0; values are limited to 1e12 to either side of 0.
Curves TakeCurves(const double* const* arrays, int scans);

// The share (0 to 1) of scans at which a channel is saturated: it stays at its greatest value for at least three scans.
double SaturatedShare(const Curves& curves, ScanRange range);

// Standard deviation of the noise from scan to scan, in the unit of the curve.
double NoiseOf(const Curve& curve, ScanRange range);
// The same in the quietest parts of the curve. Under strong peaks the noise of the light itself is added to it.
double QuietNoise(const Curve& curve);

}  // namespace lanecall
