// SPDX-License-Identifier: MIT
#include "lanecall/NoiseSmoothing.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "lanecall/Smoothing.h"

namespace lanecall {

ChannelTracks SmoothingFor(const Curves& curves, ScanRange range, const PerChannel& noise, const CTrack& min,
                           const CTrack& max) {
    constexpr int hop = 120, reach = 240;  // scans: distance of two knots, and of the scans used to either side of one
    constexpr double peakShare = 0.95;     // quantile of a curve's values that is about the height of a usual peak
    constexpr double quiet = 0.06;         // noise in relation to height at which more than `min` begins to help
    constexpr double slope = 25;           // scans of smoothing per unit of that relation, by trial
    ChannelTracks tracks;
    std::vector<double> values;
    for (std::size_t c = 0; c < channelCount; ++c) {
        std::vector<double> knots;
        for (int middle = range.first; middle < range.end + hop; middle += hop) {
            const int from = std::max(range.first, middle - reach), to = std::min(range.end, middle + reach);
            values.clear();
            for (int i = from; i < to; i += 5)  // a fifth of the scans gives the same quantile
                values.push_back(curves[c][static_cast<std::size_t>(i)]);
            const double height = std::max(Quantile(values, peakShare), noise[c]);
            const double low = min.At(middle);
            const double wanted = low + slope * (height > 0 ? noise[c] / height - quiet : 0);
            knots.push_back(std::clamp(wanted, low, max.At(middle)));
        }
        tracks[c] = CTrack(range.first, hop, std::move(knots));
        tracks[c].Smooth(1);
    }
    return tracks;
}

}  // namespace lanecall
