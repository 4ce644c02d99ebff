// SPDX-License-Identifier: MIT
#include "lanecall/SignalRange.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "lanecall/Smoothing.h"

namespace lanecall {

namespace {

constexpr int blockScans = 50;  // 3 to 5 bases, so that a block of a read has a peak in some channel

// The greatest height in each block over all channels, then the median over five blocks, which ignores single flashes
// and gaps. A short mean removes most of the noise first.
std::vector<double> BlockHeights(const Curves& curves) {
    std::vector<double> heights(static_cast<std::size_t>(ScanCount(curves) / blockScans), 0.0);
    constexpr int meanReach = 2;  // scans to either side, less than a peak is wide
    for (const Curve& raw : curves) {
        const Curve curve = BoxSmooth(raw, meanReach);
        for (std::size_t b = 0; b < heights.size(); ++b) {
            const auto from = curve.begin() + static_cast<std::ptrdiff_t>(b) * blockScans;
            heights[b] = std::max(heights[b], *std::max_element(from, from + blockScans));
        }
    }
    std::vector<double> steady(heights.size());
    for (std::size_t b = 0; b < heights.size(); ++b) {
        const auto from = heights.begin() + static_cast<std::ptrdiff_t>(b > 2 ? b - 2 : 0);
        const auto to = heights.begin() + static_cast<std::ptrdiff_t>(std::min(heights.size(), b + 3));
        steady[b] = Quantile(std::vector<double>(from, to), 0.5);
    }
    return steady;
}

// The longest run of blocks above the limit. A gap of up to four blocks does not end it.
ScanRange LongestRun(const std::vector<double>& heights, double limit) {
    constexpr int allowedGap = 4;  // blocks, some 15 bases
    const int count = static_cast<int>(heights.size());
    ScanRange best, run;
    for (int b = 0; b < count; ++b) {
        if (!(heights[static_cast<std::size_t>(b)] > limit)) continue;
        if (b - run.end > allowedGap || run.end == 0) run.first = b;
        run.end = b + 1;
        if (run.Length() > best.Length()) best = run;
    }
    return best;
}

}  // namespace

ScanRange FindSignal(const Curves& curves, const PerChannel& noise) {
    constexpr double timesNoise = 4;  // more than the greatest of the 200 values of a block reaches by noise alone
    const int scans = ScanCount(curves);
    const double limit = timesNoise * *std::max_element(noise.begin(), noise.end());
    const ScanRange blocks = LongestRun(BlockHeights(curves), limit);
    if (blocks.Length() == 0) return {};
    return {std::max(0, (blocks.first - 1) * blockScans), std::min(scans, (blocks.end + 1) * blockScans)};
}

}  // namespace lanecall
