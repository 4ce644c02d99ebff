// Filters that run along one curve in linear time.
#pragma once

#include "lanecall/Curves.h"

namespace lanecall {

// Mean over 2 * reach + 1 scans, fewer at the ends.
Curve BoxSmooth(const Curve& curve, int reach);
// Smallest / greatest value over 2 * reach + 1 scans, fewer at the ends.
Curve RunningMinimum(const Curve& curve, int reach);
Curve RunningMaximum(const Curve& curve, int reach);
// Value at a fractional scan by a cubic through four scans; the end values are repeated beyond the ends.
double Interpolate(const Curve& curve, double scan);
// The value below which `share` (0 to 1) of the values lie; 0 without values.
double Quantile(std::vector<double> values, double share);

}  // namespace lanecall
