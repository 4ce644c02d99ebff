// Reading a curve at scans that may lie outside it.
#pragma once

#include <algorithm>
#include <cstdint>
#include <span>

// The value at `scan`, or at the nearest scan that the curve has; 0 for an empty curve.
inline double ValueAt(std::span<const double> curve, std::int64_t scan) {
    if (curve.empty()) return 0.0;
    const std::int64_t last = static_cast<std::int64_t>(curve.size()) - 1;
    return curve[static_cast<std::size_t>(std::clamp<std::int64_t>(scan, 0, last))];
}
