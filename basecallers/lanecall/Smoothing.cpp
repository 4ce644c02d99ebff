// SPDX-License-Identifier: MIT
#include "lanecall/Smoothing.h"

#include <algorithm>
#include <cstddef>
#include <functional>

namespace lanecall {

namespace {

// Keeps a queue of scans whose values ascend in the sense of `before`, so that the first one is the extreme value.
template <class Before>
Curve RunningExtreme(const Curve& curve, int reach, Before before) {
    const int count = static_cast<int>(curve.size());
    Curve result(curve.size());
    std::vector<int> queue(curve.size());
    std::size_t head = 0, tail = 0;
    int next = 0;
    for (int i = 0; i < count; ++i) {
        for (; next < count && next <= i + reach; ++next) {
            while (tail > head &&
                   !before(curve[static_cast<std::size_t>(queue[tail - 1])], curve[static_cast<std::size_t>(next)]))
                --tail;
            queue[tail++] = next;
        }
        while (queue[head] < i - reach)
            ++head;
        result[static_cast<std::size_t>(i)] = curve[static_cast<std::size_t>(queue[head])];
    }
    return result;
}

}  // namespace

Curve BoxSmooth(const Curve& curve, int reach) {
    const int count = static_cast<int>(curve.size());
    Curve result(curve.size());
    const auto at = [&](int i) { return curve[static_cast<std::size_t>(i)]; };
    double sum = 0;
    for (int i = 0; i < std::min(reach, count); ++i)
        sum += at(i);
    // The window grows at the start of the curve, moves along it, and shrinks at its end.
    int i = 0;
    for (; i < count && i <= reach; ++i) {
        if (i + reach < count) sum += at(i + reach);
        result[static_cast<std::size_t>(i)] = sum / (std::min(count, i + reach + 1));
    }
    const double share = 1.0 / (2 * reach + 1);
    for (; i + reach < count; ++i) {
        sum += at(i + reach) - at(i - reach - 1);
        result[static_cast<std::size_t>(i)] = sum * share;
    }
    for (; i < count; ++i) {
        sum -= at(i - reach - 1);
        result[static_cast<std::size_t>(i)] = sum / (count - i + reach);
    }
    return result;
}

Curve RunningMinimum(const Curve& curve, int reach) {
    return RunningExtreme(curve, reach, std::less<>());
}

Curve RunningMaximum(const Curve& curve, int reach) {
    return RunningExtreme(curve, reach, std::greater<>());
}

double Interpolate(const Curve& curve, double scan) {
    const int count = static_cast<int>(curve.size());
    if (count == 0) return 0;
    if (!(scan > 0)) return curve.front();
    if (scan >= count - 1) return curve.back();
    const int left = static_cast<int>(scan);
    const double t = scan - left;
    const auto at = [&](int i) { return curve[static_cast<std::size_t>(std::clamp(i, 0, count - 1))]; };
    const double a = at(left - 1), b = at(left), c = at(left + 1), d = at(left + 2);
    return b + 0.5 * t * (c - a + t * (2 * a - 5 * b + 4 * c - d + t * (3 * (b - c) + d - a)));
}

double Quantile(std::vector<double> values, double share) {
    if (values.empty()) return 0;
    const double place = std::clamp(share, 0.0, 1.0) * static_cast<double>(values.size() - 1);
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(place);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

}  // namespace lanecall
