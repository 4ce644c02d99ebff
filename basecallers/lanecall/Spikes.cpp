// SPDX-License-Identifier: MIT
#include "lanecall/Spikes.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace lanecall {

namespace {

constexpr int reach = 4;  // scans to either side: a flash lasts a scan or two, a peak has a deviation of 3 to 7

// In every channel the curve must be high above its values `reach` - 1 scans away. A peak of a dye is too broad for
// that, and never as clear in all four channels.
bool IsSpike(const Curves& curves, const PerChannel& noise, std::size_t scan) {
    constexpr double timesNoise = 8;  // noise alone exceeds this in no channel, let alone in four
    constexpr double share = 0.6;     // of the height; a peak of deviation 3 falls by only 40 % in these 3 scans
    for (std::size_t c = 0; c < channelCount; ++c) {
        const double top = curves[c][scan];
        const double above = top - std::max(curves[c][scan - reach + 1], curves[c][scan + reach - 1]);
        if (!(above > timesNoise * noise[c] && above > share * top)) return false;
    }
    return true;
}

}  // namespace

void RemoveSpikes(Curves& curves, const PerChannel& noise) {
    const int scans = ScanCount(curves);
    std::vector<int> spikes;
    for (int i = reach; i + reach < scans; ++i)
        if (IsSpike(curves, noise, static_cast<std::size_t>(i))) spikes.push_back(i);
    for (std::size_t k = 0; k < spikes.size();) {
        const int from = spikes[k] - reach;
        while (k + 1 < spikes.size() && spikes[k + 1] - spikes[k] <= reach)
            ++k;
        const int to = spikes[k] + reach;
        ++k;
        for (Curve& curve : curves) {
            const double left = curve[static_cast<std::size_t>(from)], right = curve[static_cast<std::size_t>(to)];
            for (int i = from + 1; i < to; ++i)
                curve[static_cast<std::size_t>(i)] = left + (right - left) * (i - from) / (to - from);
        }
    }
}

}  // namespace lanecall
