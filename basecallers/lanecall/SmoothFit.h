// SPDX-License-Identifier: MIT
// Fits a smooth series to uncertain values.
#pragma once

#include <vector>

namespace lanecall {

// The series x that minimises
//     sum weights[i] * (x[i] - values[i])^2 + stiffness * sum (second differences)^2 + level * sum (first
//     differences)^2
// (Whittaker smoothing). The greater `stiffness` the less it bends, the greater `level` the flatter it is. `weights`
// are 0 or above and as many as `values`; `stiffness` and `level` are above 0.
std::vector<double> SmoothFit(const std::vector<double>& values, const std::vector<double>& weights, double stiffness,
                              double level);

}  // namespace lanecall
