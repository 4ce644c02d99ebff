// SPDX-License-Identifier: MIT
#include "lanecall/Humps.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "lanecall/Smoothing.h"

namespace lanecall {

namespace {

constexpr int passes = 3;  // of a running mean, whose result is then nearly that of a Gaussian

// Scans to either side of a running mean, so that three of them have about the given deviation: the variance of a mean
// over n values is (n^2 - 1) / 12.
int ReachOf(double deviation) {
    return std::max(1, static_cast<int>((std::sqrt(1 + 12 / passes * deviation * deviation) - 1) / 2));
}

double DeviationOf(int reach) {
    return std::sqrt(passes * ((2 * reach + 1) * (2 * reach + 1) - 1) / 12.0);
}

}  // namespace

HumpFilter HumpFilterFor(const CTrack& widths, const CTrack& spacing) {
    constexpr double share = 1;       // deviation of the running mean, in spacings, by trial
    constexpr double greatest = 0.6;  // part that is subtracted, by trial: 0.4 to 0.7 do as well
    // Deviations of a peak in spacings: up to the first the part is the greatest, from the second on it is 0. By trial.
    constexpr double resolved = 0.4, merged = 0.6;
    HumpFilter filter{spacing, 1};
    double mean = 0;
    for (std::size_t k = 0; k < spacing.Size(); ++k) {
        mean += spacing[k] / static_cast<double>(spacing.Size());
        filter.part[k] = greatest * std::clamp((merged - widths[k] / spacing[k]) / (merged - resolved), 0.0, 1.0);
    }
    filter.deviation = DeviationOf(ReachOf(share * mean));
    return filter;
}

Curve WithoutHumps(const Curve& curve, const HumpFilter& filter) {
    const int reach = ReachOf(filter.deviation);
    Curve mean = curve;
    for (int pass = 0; pass < passes; ++pass)
        mean = BoxSmooth(mean, reach);
    for (std::size_t i = 0; i < curve.size(); ++i)
        mean[i] = curve[i] - filter.part.At(static_cast<double>(i)) * mean[i];
    return mean;
}

}  // namespace lanecall
