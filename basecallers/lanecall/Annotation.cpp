// SPDX-License-Identifier: MIT
#include "lanecall/Annotation.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <utility>

#include "lanecall/RawTrace.h"
#include "lanecall/Smoothing.h"

namespace lanecall {

namespace {

std::int32_t Whole(double value) {
    return static_cast<std::int32_t>(std::clamp(value, 0.0, 2e9));
}

}  // namespace

void MeasureZones(Annotation& notes, const Curves& curves, ScanRange range, int count) {
    constexpr double peakShare = 0.95;  // quantile of a curve's values that is about the height of a usual peak
    if (range.Length() < count) return;
    for (int z = 0; z < count; ++z) {
        const auto edge = [&](int zone) {
            return range.first + static_cast<int>(static_cast<long long>(range.Length()) * zone / count);
        };
        const ScanRange zone{edge(z), edge(z + 1)};
        notes.zones.insert(notes.zones.end(), {zone.first, zone.end});
        for (const Curve& curve : curves) {
            std::vector<double> values(curve.begin() + zone.first, curve.begin() + zone.end);
            notes.zoneValues.push_back(Whole(Quantile(std::move(values), peakShare) + 0.5));
            notes.zoneValues.push_back(Whole(NoiseOf(curve, zone) + 0.5));
        }
    }
}

void MeasureSpacing(Annotation& notes, ScanRange range, const CTrack& widths, const CTrack& spacing, int step) {
    const double halfWidth = std::sqrt(8 * std::log(2.0));  // of a Gaussian of deviation 1
    for (int scan = range.first + step / 2; scan < range.end; scan += step) {
        notes.fwhm.push_back(static_cast<float>(halfWidth * widths.At(scan)));
        notes.gaps.push_back(Whole(spacing.At(scan) + 0.5));
        notes.positions.push_back(scan);
    }
}

void MeasureSeparation(Annotation& notes, const std::vector<Call>& calls, const Curves& processed) {
    // Many peaks overlap their neighbours, which says nothing about the dyes; the median ignores them.
    std::array<std::vector<double>, channelCount> shares;
    for (const Call& call : calls) {
        const auto scan = static_cast<std::size_t>(call.scan);
        const auto channel = static_cast<std::size_t>(call.channel);
        double total = 0;
        for (const Curve& curve : processed)
            total += std::max(0.0, curve[scan]);
        if (total > 0) shares[channel].push_back(std::max(0.0, processed[channel][scan]) / total);
    }
    std::vector<double> all;
    for (std::size_t c = 0; c < channelCount; ++c) {
        all.insert(all.end(), shares[c].begin(), shares[c].end());
        notes.separationQualities[c] = Quantile(shares[c], 0.5);
    }
    notes.separationQuality = static_cast<float>(Quantile(std::move(all), 0.5));
}

}  // namespace lanecall
