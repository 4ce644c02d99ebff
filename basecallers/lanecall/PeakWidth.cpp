// SPDX-License-Identifier: MIT
#include "lanecall/PeakWidth.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

#include "lanecall/Smoothing.h"

namespace lanecall {

namespace {

// Standard deviation, in scans, of the Gaussian through the top at `scan` and the mean of the two values `reach` scans
// away: sides = top * exp(-reach^2 / (2 * deviation^2)). 0 if there is no peak.
double WidthAt(const Curve& curve, double scan, double reach) {
    const double top = Interpolate(curve, scan);
    const double sides = 0.5 * (Interpolate(curve, scan - reach) + Interpolate(curve, scan + reach));
    if (!(top > 0) || !(sides < 0.98 * top)) return 0;
    return reach / std::sqrt(2 * std::log(top / std::max(sides, 0.01 * top)));
}

}  // namespace

CTrack EstimateWidth(const Curves& curves, const ImpulseLists& impulses, const Spacing& spacing) {
    constexpr double reachScans = 500;      // peaks to either side of a knot, some 35 bases
    constexpr double usualShare = 0.35;     // spacings, where nothing can be measured
    constexpr double narrowQuantile = 0.3;  // of the measured widths
    constexpr double usualWeight = 0.5;     // smaller peaks are mostly noise or other dyes' light
    constexpr double flank = 0.4;           // spacings from the top to where the height is taken
    // A short mean removes noise. It adds its own variance, that of n equal values ((n^2 - 1) / 12), to that of a peak.
    constexpr int meanReach = 2;
    constexpr double meanVariance = ((2 * meanReach + 1) * (2 * meanReach + 1) - 1) / 12.0;
    Curves smooth;
    for (std::size_t c = 0; c < channelCount; ++c)
        smooth[c] = BoxSmooth(curves[c], meanReach);
    std::vector<double> widths(spacing.scans.Size());
    for (std::size_t k = 0; k < widths.size(); ++k) {
        const double middle = spacing.scans.ScanOf(k), distance = spacing.scans[k];
        std::vector<double> found;
        for (std::size_t c = 0; c < channelCount; ++c) {
            auto at = std::lower_bound(impulses[c].begin(), impulses[c].end(), middle - reachScans,
                                       [](const Impulse& impulse, double scan) { return impulse.scan < scan; });
            for (; at != impulses[c].end() && at->scan < middle + reachScans; ++at) {
                if (at->weight < usualWeight) continue;
                const double width = WidthAt(smooth[c], at->scan, flank * distance);
                if (width > 0) found.push_back(std::sqrt(std::max(1.0, width * width - meanVariance)));
            }
        }
        const double width = found.size() < 6 ? usualShare * distance : Quantile(std::move(found), narrowQuantile);
        widths[k] = std::clamp(width, 0.15 * distance, 0.8 * distance);
    }
    const double first = spacing.scans.Size() > 0 ? spacing.scans.ScanOf(0) : 0;
    const double step = spacing.scans.Size() > 1 ? spacing.scans.ScanOf(1) - first : 1;
    CTrack track(first, step, std::move(widths));
    track.Smooth(2);
    return track;
}

}  // namespace lanecall
