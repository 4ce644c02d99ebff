// SPDX-License-Identifier: MIT
#include "lanecall/SignalRange.h"

#include <algorithm>
#include <cmath>
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

// The run of blocks with the greatest sum of log(height / limit). So a strong read counts for more than a long stretch
// that hardly exceeds the limit. A run ends where what follows is lower for longer than the run is worth, and at any
// gap that no read has, such as the one between the flash of free dye and the first bases.
ScanRange StrongestRun(const std::vector<double>& heights, double limit) {
    constexpr double lowest = -1;  // about the value of noise alone, so that a gap of a few blocks ends no read
    constexpr int maxGap = 8;      // blocks, some 30 bases
    const int count = static_cast<int>(heights.size());
    ScanRange best, run;
    double bestSum = 0, sum = 0;
    int gap = 0;
    for (int b = 0; b < count; ++b) {
        const double ratio = heights[static_cast<std::size_t>(b)] / limit;
        sum += ratio > 0 ? std::max(lowest, std::log(ratio)) : lowest;
        run.end = b + 1;
        if (sum > bestSum) {
            best = run;
            bestSum = sum;
        }
        gap = ratio > 1 ? 0 : gap + 1;
        if (sum > 0 && gap <= maxGap) continue;
        sum = 0;
        run.first = b + 1;
    }
    return best;
}

}  // namespace

ScanRange FindSignal(const Curves& curves, const PerChannel& noise, SignalPart part) {
    constexpr double timesNoise = 4;    // more than the greatest of the 200 values of a block reaches by noise alone
    constexpr double minShare = 0.002;  // of the tallest block; no read is followed over more than such a fall
    constexpr double timesUsual = 3;    // higher than the waves of an idle run, which differ less among themselves
    const int scans = ScanCount(curves);
    const std::vector<double> heights = BlockHeights(curves);
    if (heights.empty()) return {};
    double limit = std::max(timesNoise * *std::max_element(noise.begin(), noise.end()),
                            minShare * *std::max_element(heights.begin(), heights.end()));
    if (!(limit > 0)) return {};
    ScanRange blocks = StrongestRun(heights, limit);
    if (part == SignalPart::tallest && blocks.Length() > 0) {
        limit =
            std::max(limit, timesUsual * Quantile({heights.begin() + blocks.first, heights.begin() + blocks.end}, 0.5));
        blocks = StrongestRun(heights, limit);
    }
    if (blocks.Length() == 0) return {};
    return {std::max(0, (blocks.first - 1) * blockScans), std::min(scans, (blocks.end + 1) * blockScans)};
}

}  // namespace lanecall
