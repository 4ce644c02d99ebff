#include "lanecall/Baseline.h"

#include <algorithm>

#include "lanecall/Smoothing.h"

namespace lanecall {

void RemoveBaseline(Curve& curve, int window) {
    const int reach = std::max(1, window / 2);
    // The lowest value follows the noise down; a short mean first keeps it near the middle of the noise.
    Curve level = RunningMaximum(RunningMinimum(BoxSmooth(curve, 3), reach), reach);
    level = BoxSmooth(level, reach / 2);
    for (std::size_t i = 0; i < curve.size(); ++i)
        curve[i] -= level[i];
}

}  // namespace lanecall
