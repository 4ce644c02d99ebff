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
// The cubic (Catmull-Rom) through four neighbouring values, between `b` and `c`: `t` from 0 at `b` to 1 at `c`.
inline double Cubic(double a, double b, double c, double d, double t) {
    return b + 0.5 * t * (c - a + t * (2 * a - 5 * b + 4 * c - d + t * (3 * (b - c) + d - a)));
}
// The value between scans, from a cubic (Catmull-Rom) through the four scans around it. Beyond the ends it is the value
// of the first or last scan, of an empty curve 0.
inline double Interpolate(const Curve& curve, double scan) {
    const int count = static_cast<int>(curve.size());
    if (count == 0) return 0;
    if (!(scan > 0)) return curve.front();
    if (scan >= count - 1) return curve.back();
    const int left = static_cast<int>(scan);
    const double t = scan - left;
    const double* y = curve.data() + left;
    return Cubic(y[left > 0 ? -1 : 0], y[0], y[1], y[left + 2 < count ? 2 : 1], t);
}
// The value below which the given share (0 to 1) of the values lies; 0 if there are none.
double Quantile(std::vector<double> values, double share);

}  // namespace lanecall
