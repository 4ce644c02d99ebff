// SPDX-License-Identifier: MIT
#include "lanecall/Baseline.h"

#include <algorithm>
#include <cstddef>

#include "lanecall/Smoothing.h"

namespace lanecall {

void RemoveBaseline(Curve& curve, int window) {
    constexpr int meanReach = 3;  // scans to either side
    const int reach = std::max(1, window / 2);
    // The minimum of a noisy curve lies below its baseline, the more so the noisier it is. A short mean removes most of
    // that noise first.
    Curve level = RunningMaximum(RunningMinimum(BoxSmooth(curve, meanReach), reach), reach);
    level = BoxSmooth(level, reach / 2);
    for (std::size_t i = 0; i < curve.size(); ++i)
        curve[i] -= level[i];
}

}  // namespace lanecall
