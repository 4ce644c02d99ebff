// SPDX-License-Identifier: MIT
#include "lanecall/RawTrace.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

#include "lanecall/Smoothing.h"

namespace lanecall {

Curves TakeCurves(const double* const* arrays, int scans) {
    constexpr double limit = 1e12;  // counts, beyond any detector; sums and squares of such values stay finite
    Curves curves;
    for (std::size_t c = 0; c < channelCount; ++c) {
        curves[c].resize(static_cast<std::size_t>(scans));
        for (std::size_t i = 0; i < curves[c].size(); ++i) {
            const double value = arrays[c][i];
            curves[c][i] = std::isnan(value) ? 0 : std::clamp(value, -limit, limit);
        }
    }
    return curves;
}

double SaturatedShare(const Curves& curves, ScanRange range) {
    if (range.Length() == 0) return 0;
    std::vector<char> flat(static_cast<std::size_t>(range.Length()), 0);
    for (const Curve& curve : curves) {
        const auto begin = curve.begin() + range.first, end = curve.begin() + range.end;
        const auto extremes = std::minmax_element(begin, end);
        const double limit = *extremes.second;
        if (*extremes.first == limit) continue;
        for (auto at = begin; at != end;) {
            at = std::find(at, end, limit);
            const auto stop = std::find_if(at, end, [limit](double value) { return value != limit; });
            if (stop - at >= 3) std::fill(flat.begin() + (at - begin), flat.begin() + (stop - begin), 1);
            at = stop;
        }
    }
    return static_cast<double>(std::count(flat.begin(), flat.end(), 1)) / range.Length();
}

double NoiseOf(const Curve& curve, ScanRange range) {
    // Third differences leave little of a peak. For white noise of deviation 1 their deviation is sqrt(1 + 9 + 9 + 1),
    // and 30 % of the absolute values of a normal distribution lie below 0.3853 deviations.
    // Neighbouring differences say nearly the same, so every second one is used, and of a long range some 4,000, whose
    // quantile varies by 2 %.
    constexpr int enough = 4000;
    const int stride = 2 + range.Length() / enough;
    std::vector<double> differences;
    differences.reserve(static_cast<std::size_t>(range.Length() / stride + 1));
    for (int i = range.first; i + 3 < range.end; i += stride) {
        const double* y = curve.data() + i;
        // Four equal values come from a recorder that cuts off at 0 or at its greatest value: they show no noise.
        if (y[0] == y[1] && y[1] == y[2] && y[2] == y[3]) continue;
        differences.push_back(std::abs(y[3] - 3 * y[2] + 3 * y[1] - y[0]));
    }
    return Quantile(std::move(differences), 0.3) / (0.3853 * std::sqrt(20.0));
}

double QuietNoise(const Curve& curve) {
    constexpr int stretchScans = 400;  // enough differences: their quantile varies by some 10 %
    constexpr double quiet = 0.3;      // quantile over the stretches
    const int scans = static_cast<int>(curve.size());
    std::vector<double> noises;
    for (int first = 0; first + stretchScans <= scans; first += stretchScans) {
        const double noise = NoiseOf(curve, {first, first + stretchScans});
        if (noise > 0) noises.push_back(noise);
    }
    return noises.empty() ? NoiseOf(curve, {0, scans}) : Quantile(std::move(noises), quiet);
}

}  // namespace lanecall
