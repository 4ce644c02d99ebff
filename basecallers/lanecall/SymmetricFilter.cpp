// SPDX-License-Identifier: MIT
#include "lanecall/SymmetricFilter.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "lanecall/Processor.h"

namespace lanecall {

namespace {

constexpr int together = 32;  // scans whose sums are held in registers

// The sums of `together` scans from `y` on. Every sum adds its taps in the same order, from the middle outward.
LANECALL_WIDE void SumTogether(const double* y, const double* taps, std::ptrdiff_t reach, double* result) {
    std::array<double, together> sums;
    for (int i = 0; i < together; ++i)
        sums[static_cast<std::size_t>(i)] = taps[0] * y[i];
    for (std::ptrdiff_t k = 1; k <= reach; ++k)
        for (int i = 0; i < together; ++i)
            sums[static_cast<std::size_t>(i)] += taps[k] * (y[i + k] + y[i - k]);
    std::copy(sums.begin(), sums.end(), result);
}

}  // namespace

void FilterSymmetric(const Curve& curve, ScanRange range, const std::vector<double>& taps, Curve& result) {
    const auto reach = static_cast<std::ptrdiff_t>(taps.size()) - 1;
    int i = range.first;
    for (; i + together <= range.end; i += together)
        SumTogether(curve.data() + i, taps.data(), reach, result.data() + i);
    for (; i < range.end; ++i) {
        const double* y = curve.data() + i;
        double value = taps[0] * y[0];
        for (std::ptrdiff_t k = 1; k <= reach; ++k)
            value += taps[static_cast<std::size_t>(k)] * (y[k] + y[-k]);
        result[static_cast<std::size_t>(i)] = value;
    }
}

}  // namespace lanecall
