// A smooth row of values through uncertain ones.
#pragma once

#include <vector>

namespace lanecall {

// The row that keeps near `values` where their weights are high and bends little; `stiffness` weighs its bends (squared
// second differences) and `level` its slopes against the weights. Weights are 0 or above; both costs are above 0.
std::vector<double> SmoothFit(const std::vector<double>& values, const std::vector<double>& weights, double stiffness,
                              double level);

}  // namespace lanecall
