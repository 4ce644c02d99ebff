// SPDX-License-Identifier: MIT
// Reads a curve at scans that may lie outside it. Scans are indices of the curve.
#pragma once

#include <algorithm>
#include <cstdint>
#include <span>
#include <vector>

// The value at `scan`, or at the nearest scan that the curve has; 0 for an empty curve.
inline double ValueAt(std::span<const double> curve, std::int64_t scan) {
    if (curve.empty()) return 0.0;
    const std::int64_t last = static_cast<std::int64_t>(curve.size()) - 1;
    return curve[static_cast<std::size_t>(std::clamp<std::int64_t>(scan, 0, last))];
}

// The values of a curve at `count` scans (0 or more), beginning at `first`, `step` scans apart, as one contiguous row.
// The row is part of the curve itself if possible, and a copy if the scans leave the curve or are not adjacent. The
// curve must outlive the object.
class CScanValues {
  public:
    CScanValues(std::span<const double> curve, std::int64_t first, std::int64_t count, std::int64_t step = 1) {
        const auto size = static_cast<std::size_t>(count);
        if (step == 1 && first >= 0 && first <= static_cast<std::int64_t>(curve.size()) - count) {
            values = curve.subspan(static_cast<std::size_t>(first), size);
            return;
        }
        copy.reserve(size);
        for (std::int64_t i = 0; i < count; ++i)
            copy.push_back(ValueAt(curve, first + i * step));
        values = copy;
    }
    CScanValues(const CScanValues&) = delete;
    CScanValues& operator=(const CScanValues&) = delete;

    std::span<const double> All() const { return values; }

  private:
    std::vector<double> copy;
    std::span<const double> values;
};
