// SPDX-License-Identifier: MIT
#include "lanecall/Impulses.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "lanecall/Processor.h"
#include "lanecall/Smoothing.h"
#include "lanecall/SymmetricFilter.h"

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

// The sums of the heights above 0 and of their squares, each added up in four parts that do not wait for each other.
void SumHeights(const Curve& bend, ScanRange range, double& sum, double& squares) {
    constexpr std::size_t parts = 4;
    std::array<double, parts> sums{}, squareSums{};
    for (int i = range.first; i < range.end; ++i) {
        const double height = std::max(0.0, bend[static_cast<std::size_t>(i)]);
        const auto part = static_cast<std::size_t>(i) % parts;
        sums[part] += height;
        squareSums[part] += height * height;
    }
    sum = (sums[0] + sums[1]) + (sums[2] + sums[3]);
    squares = (squareSums[0] + squareSums[1]) + (squareSums[2] + squareSums[3]);
}

// The usual height of the tops of a bend curve in each block of the range, from the blocks around it. The mean square
// divided by the mean depends on the height of the peaks and not on how many there are.
Curve UsualHeights(const Curve& bend, ScanRange range) {
    constexpr int reach = 5;  // blocks to either side, so 660 scans in all
    const auto count = static_cast<std::size_t>((range.Length() + levelBlock - 1) / levelBlock);
    Curve means(count), squares(count);
    for (std::size_t b = 0; b < count; ++b) {
        const int first = range.first + static_cast<int>(b) * levelBlock;
        SumHeights(bend, {first, std::min(first + levelBlock, range.end)}, means[b], squares[b]);
    }
    means = BoxSmooth(means, reach);
    squares = BoxSmooth(squares, reach);
    for (std::size_t b = 0; b < count; ++b)
        squares[b] = means[b] > 0 ? squares[b] / means[b] : 1;
    return squares;
}

// Writes for each scan of the range, which has a scan on either side, 1 to `tops` if it is a top above 0, else 0. Apart
// from the search for the few tops this needs no branch.
LANECALL_WIDE void MarkTops(const Curve& bend, ScanRange range, char* tops) {
    const double* y = bend.data() + range.first;
    for (int i = 0; i < range.Length(); ++i)
        tops[i] = static_cast<char>((y[i] > 0) & (y[i] >= y[i - 1]) & (y[i] > y[i + 1]));
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
        if (from < to) FilterSymmetric(curve, {from, to}, taps, result);
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
    const ScanRange inner{std::max(1, range.first), std::min(range.end - 1, static_cast<int>(bend.size()) - 1)};
    std::vector<char> tops(static_cast<std::size_t>(inner.Length()));
    MarkTops(bend, inner, tops.data());
    for (auto top = tops.begin(); (top = std::find(top, tops.end(), 1)) != tops.end(); ++top) {
        const int i = inner.first + static_cast<int>(top - tops.begin());
        const double* y = bend.data() + i;
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
