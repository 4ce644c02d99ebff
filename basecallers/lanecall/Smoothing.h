// SPDX-License-Identifier: MIT
// Filters over one curve. Each takes time in proportion to the number of scans.
#pragma once

#include <vector>

#include "lanecall/Curves.h"

namespace lanecall {

// Mean over 2 * reach + 1 scans, fewer at the ends.
Curve BoxSmooth(const Curve& curve, int reach);
// Smallest and greatest value over 2 * reach + 1 scans, fewer at the ends.
Curve RunningMinimum(const Curve& curve, int reach);
Curve RunningMaximum(const Curve& curve, int reach);
// The value between scans, from a cubic (Catmull-Rom) through the four scans around it. Beyond the ends it is the value
// of the first or last scan, of an empty curve 0.
double Interpolate(const Curve& curve, double scan);
// The value below which the given share (0 to 1) of the values lies; 0 if there are none.
double Quantile(std::vector<double> values, double share);

}  // namespace lanecall
