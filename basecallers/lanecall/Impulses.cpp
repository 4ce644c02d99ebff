// SPDX-License-Identifier: MIT
#include "lanecall/Impulses.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "lanecall/Smoothing.h"

namespace lanecall {

namespace {

std::vector<double> BendFilter(double smoothing) {
    const int reach = std::max(2, static_cast<int>(std::ceil(4 * smoothing)));
    std::vector<double> taps(static_cast<std::size_t>(reach + 1));
    double sum = 0, response = 0;
    for (int k = 0; k <= reach; ++k) {
        const double u = k / smoothing;
        taps[static_cast<std::size_t>(k)] = (1 - u * u) * std::exp(-u * u / 2);
        sum += (k == 0 ? 1 : 2) * taps[static_cast<std::size_t>(k)];
    }
    for (double& tap : taps)
        tap -= sum / (2 * reach + 1);
    constexpr double peak = 4.5;  // standard deviation of a usual peak, in scans; only the scale depends on it
    for (int k = 0; k <= reach; ++k)
        response += (k == 0 ? 1 : 2) * taps[static_cast<std::size_t>(k)] * std::exp(-0.5 * k * k / (peak * peak));
    for (double& tap : taps)
        tap /= response;
    return taps;
}

constexpr int levelBlock = 60;  // scans, some 4 bases

// The usual height of the tops of a bend curve in each block of the range, from the blocks around it. The mean square
// divided by the mean depends on the height of the peaks and not on how many there are.
Curve UsualHeights(const Curve& bend, ScanRange range) {
    constexpr int reach = 5;  // blocks to either side, so 660 scans in all
    const auto count = static_cast<std::size_t>((range.Length() + levelBlock - 1) / levelBlock);
    Curve means(count), squares(count);
    for (std::size_t b = 0; b < count; ++b) {
        const int first = range.first + static_cast<int>(b) * levelBlock;
        for (int i = first; i < std::min(first + levelBlock, range.end); ++i) {
            const double height = std::max(0.0, bend[static_cast<std::size_t>(i)]);
            means[b] += height;
            squares[b] += height * height;
        }
    }
    means = BoxSmooth(means, reach);
    squares = BoxSmooth(squares, reach);
    for (std::size_t b = 0; b < count; ++b)
        squares[b] = means[b] > 0 ? squares[b] / means[b] : 1;
    return squares;
}

}  // namespace

Curve Bend(const Curve& curve, ScanRange range, const CTrack& smoothing) {
    constexpr int blockScans = 60;  // with one smoothing
    constexpr double ratio = 1.08;  // a new filter is made only when the smoothing has changed by more, for speed
    Curve result(curve.size(), 0.0);
    std::vector<double> taps;
    double made = 0;
    for (int block = range.first; block < range.end; block += blockScans) {
        const double wanted = smoothing.At(block + 0.5 * blockScans);
        if (taps.empty() || wanted > made * ratio || wanted < made / ratio) {
            taps = BendFilter(wanted);
            made = wanted;
        }
        const int reach = static_cast<int>(taps.size()) - 1;
        const int from = std::max(block, reach);
        const int to = std::min({block + blockScans, range.end, static_cast<int>(curve.size()) - reach});
        for (int i = from; i < to; ++i) {
            const double* y = curve.data() + i;
            double value = taps[0] * y[0];
            for (int k = 1; k <= reach; ++k)
                value += taps[static_cast<std::size_t>(k)] * (y[k] + y[-k]);
            result[static_cast<std::size_t>(i)] = value;
        }
    }
    return result;
}

Curves Bend(const Curves& curves, ScanRange range, const ChannelTracks& smoothing) {
    Curves bends;
    for (std::size_t c = 0; c < channelCount; ++c)
        bends[c] = Bend(curves[c], range, smoothing[c]);
    return bends;
}

std::vector<Impulse> FindImpulses(const Curve& bend, ScanRange range) {
    constexpr double minWeight = 0.15;  // smaller tops are noise or remains of another dye
    constexpr double maxWeight = 2;     // so that one huge peak does not outweigh all others
    const Curve usual = UsualHeights(bend, range);
    std::vector<Impulse> impulses;
    for (int i = std::max(1, range.first); i + 1 < std::min(range.end, static_cast<int>(bend.size())); ++i) {
        const double* y = bend.data() + i;
        if (!(y[0] > 0 && y[0] >= y[-1] && y[0] > y[1])) continue;
        const double weight =
            std::min(maxWeight, y[0] / usual[static_cast<std::size_t>((i - range.first) / levelBlock)]);
        if (!(weight > minWeight)) continue;
        const double curvature = y[-1] - 2 * y[0] + y[1];
        impulses.push_back({i + (curvature < 0 ? 0.5 * (y[-1] - y[1]) / curvature : 0.0), weight});
    }
    return impulses;
}

ImpulseLists FindImpulses(const Curves& bends, ScanRange range) {
    ImpulseLists lists;
    for (std::size_t c = 0; c < channelCount; ++c)
        lists[c] = FindImpulses(bends[c], range);
    return lists;
}

}  // namespace lanecall
