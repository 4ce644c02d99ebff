#include "lanecall/Levels.h"

#include <algorithm>
#include <cmath>

#include "lanecall/Smoothing.h"

namespace lanecall {

namespace {

constexpr double hopScans = 150, reachScans = 450;
constexpr double leastShare = 0.2;  // of the strongest channel's level
constexpr std::size_t fewestPeaks = 4;

// Median height of the strong peaks near `middle`, 0 when there are too few to tell.
double HeightNear(const Curve& curve, const std::vector<Impulse>& impulses, double middle) {
    constexpr double strong = 0.35;
    std::vector<double> heights;
    auto at = std::lower_bound(impulses.begin(), impulses.end(), middle - reachScans,
                               [](const Impulse& impulse, double scan) { return impulse.scan < scan; });
    for (; at != impulses.end() && at->scan < middle + reachScans; ++at)
        if (at->weight > strong) heights.push_back(Interpolate(curve, at->scan));
    return heights.size() < fewestPeaks ? 0 : Quantile(std::move(heights), 0.5);
}

}  // namespace

LevelTracks EstimateLevels(const Curves& curves, const ImpulseLists& impulses, ScanRange range) {
    std::vector<PerChannel> seen;
    std::vector<double> greatest;
    double last = 1;
    for (double middle = range.first; middle < range.end + hopScans; middle += hopScans) {
        PerChannel here{};
        for (std::size_t c = 0; c < channelCount; ++c)
            here[c] = HeightNear(curves[c], impulses[c], middle);
        const double most = *std::max_element(here.begin(), here.end());
        if (most > 0) last = most;
        seen.push_back(here);
        greatest.push_back(last);
    }
    LevelTracks tracks;
    for (std::size_t c = 0; c < channelCount; ++c) {
        std::vector<double> shares, levels;
        for (std::size_t k = 0; k < seen.size(); ++k)
            shares.push_back(seen[k][c] / greatest[k]);
        const double least = std::max(leastShare, 0.5 * Quantile(shares, 0.5));
        for (std::size_t k = 0; k < seen.size(); ++k)
            levels.push_back(std::max(seen[k][c], least * greatest[k]));
        tracks[c] = CTrack(range.first, hopScans, std::move(levels));
        tracks[c].Smooth(1);
    }
    return tracks;
}

void DivideByLevels(Curves& curves, const LevelTracks& levels) {
    for (std::size_t c = 0; c < channelCount; ++c)
        for (std::size_t i = 0; i < curves[c].size(); ++i) {
            const double level = levels[c].At(static_cast<double>(i));
            curves[c][i] = level > 0 ? curves[c][i] / level : 0;
        }
}

}  // namespace lanecall
