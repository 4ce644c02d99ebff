// SPDX-License-Identifier: MIT
#include "lanecall/Levels.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>
#include <vector>

#include "lanecall/Smoothing.h"

namespace lanecall {

namespace {

constexpr double hopScans = 120;  // between two knots, some 9 bases

struct Top {
    double scan, height;
};
using Tops = std::vector<Top>;

// The tops of a channel's peaks, without noise and without small peaks among tall ones (mostly other dyes' light).
Tops StrongTops(const Curve& curve, const std::vector<Impulse>& impulses, double noise) {
    constexpr double strong = 0.35;   // weight; a usual peak has 1
    constexpr double aboveNoise = 4;  // times the noise
    Tops tops;
    for (const Impulse& impulse : impulses) {
        if (!(impulse.weight > strong)) continue;
        const double height = Interpolate(curve, impulse.scan);
        if (height > aboveNoise * noise) tops.push_back({impulse.scan, height});
    }
    return tops;
}

// The quantile `share` of the heights of the tops within `reach` scans of `middle`; 0 if there are fewer than
// `minTops`.
double HeightNear(const Tops& tops, double middle, double reach, std::size_t minTops, double share) {
    std::vector<double> heights;
    auto at = std::lower_bound(tops.begin(), tops.end(), middle - reach,
                               [](const Top& top, double scan) { return top.scan < scan; });
    for (; at != tops.end() && at->scan < middle + reach; ++at)
        heights.push_back(at->height);
    return heights.size() < minTops ? 0 : Quantile(std::move(heights), share);
}

// The height of each channel relative to the mean of all channels, over long stretches.
ChannelTracks Shares(const std::array<Tops, channelCount>& tops, ScanRange range) {
    constexpr double reach = 600;  // scans, some 45 bases
    // Of the mean, by trial. A channel that is weaker still holds noise and other dyes' light, which would be
    // magnified.
    constexpr double minShare = 0.5;
    // Above the median: where a letter is rare, half of its tops are other dyes' light.
    constexpr double peakShare = 0.7;
    constexpr std::size_t minTops = 4;  // tops for a median
    std::array<std::vector<double>, channelCount> shares;
    PerChannel last;
    last.fill(1);
    for (double middle = range.first; middle < range.end + hopScans; middle += hopScans) {
        PerChannel heights{};
        double sum = 0, seen = 0;
        for (std::size_t c = 0; c < channelCount; ++c) {
            heights[c] = HeightNear(tops[c], middle, reach, minTops, peakShare);
            sum += heights[c];
            seen += heights[c] > 0;
        }
        for (std::size_t c = 0; c < channelCount; ++c) {
            if (heights[c] > 0 && seen > 1) last[c] = std::max(minShare, heights[c] * seen / sum);
            shares[c].push_back(last[c]);
        }
    }
    ChannelTracks tracks;
    for (std::size_t c = 0; c < channelCount; ++c) {
        tracks[c] = CTrack(range.first, hopScans, std::move(shares[c]));
        tracks[c].Smooth(2);
    }
    return tracks;
}

}  // namespace

ChannelTracks EstimateLevels(const Curves& curves, const ImpulseLists& impulses, ScanRange range,
                             const PerChannel& noise) {
    constexpr double reach = 250;       // scans: short, since the level of a read may drop tenfold within a few bases
    constexpr double floor = 4;         // times the noise
    constexpr std::size_t minTops = 8;  // tops for a median
    std::array<Tops, channelCount> tops;
    for (std::size_t c = 0; c < channelCount; ++c)
        tops[c] = StrongTops(curves[c], impulses[c], noise[c]);
    const ChannelTracks shares = Shares(tops, range);
    Tops all;
    for (std::size_t c = 0; c < channelCount; ++c)
        for (const Top& top : tops[c])
            all.push_back({top.scan, top.height / shares[c].At(top.scan)});
    std::sort(all.begin(), all.end(), [](const Top& a, const Top& b) { return a.scan < b.scan; });
    std::vector<double> heights;
    double last = 0;
    for (double middle = range.first; middle < range.end + hopScans; middle += hopScans) {
        const double height = HeightNear(all, middle, reach, minTops, 0.5);
        if (height > 0) {
            if (last == 0) std::fill(heights.begin(), heights.end(), height);
            last = height;
        }
        heights.push_back(last);
    }
    CTrack height(range.first, hopScans, std::move(heights));
    height.Smooth(1);
    ChannelTracks levels = shares;
    for (std::size_t c = 0; c < channelCount; ++c)
        for (std::size_t k = 0; k < levels[c].Size(); ++k)
            levels[c][k] = std::max({levels[c][k] * height[k], floor * noise[c], 1e-9});
    return levels;
}

void DivideByLevels(Curves& curves, const ChannelTracks& levels) {
    for (std::size_t c = 0; c < channelCount; ++c)
        for (std::size_t i = 0; i < curves[c].size(); ++i) {
            const double level = levels[c].At(static_cast<double>(i));
            curves[c][i] = level > 0 ? curves[c][i] / level : 0;
        }
}

}  // namespace lanecall
