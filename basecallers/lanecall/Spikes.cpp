#include "lanecall/Spikes.h"

#include <algorithm>

namespace lanecall {

namespace {

constexpr int reach = 4;  // scans to either side that a flash may fill

// A peak of a dye is broader than a flash, and never as clear in all four channels.
bool IsSpike(const Curves& curves, const PerChannel& noise, std::size_t scan) {
    constexpr double timesNoise = 8, share = 0.6;
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
