// SPDX-License-Identifier: MIT
// A filter that looks the same to both sides, over a stretch of a curve.
#pragma once

#include <vector>

#include "lanecall/Curves.h"

namespace lanecall {

// For each scan of `range` the sum of taps[0] times its value and taps[k] times the values k scans before and after it,
// written to the same scan of `result`. All scans that this needs must be in the curve; `result` is as long as the
// curve.
void FilterSymmetric(const Curve& curve, ScanRange range, const std::vector<double>& taps, Curve& result);

}  // namespace lanecall
