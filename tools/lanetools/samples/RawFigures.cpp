// SPDX-License-Identifier: MIT
#include "lanetools/samples/RawFigures.h"

#include <algorithm>
#include <cmath>

#include "lanetools/samples/CallFigures.h"

namespace lanetools {

namespace {

constexpr std::size_t baseReach = 150;  // scans to either side in which a channel reaches its baseline

double Median(std::vector<double> values) {
    if (values.empty()) return 0;
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

double ValueAt(std::span<const ScanRecord> raw, std::size_t scan, std::size_t channel) {
    return raw[scan].words[channel + 1];
}

double HeightAt(std::span<const ScanRecord> raw, std::size_t scan, std::size_t channel) {
    double lowest = ValueAt(raw, scan, channel);
    for (std::size_t i = scan - std::min(scan, baseReach); i < std::min(raw.size(), scan + baseReach + 1); ++i)
        lowest = std::min(lowest, ValueAt(raw, i, channel));
    return ValueAt(raw, scan, channel) - lowest;
}

// Third differences leave little of a peak. For white noise of deviation 1 their deviation is sqrt(1 + 9 + 9 + 1), and
// half of the absolute values of a normal distribution are below 0.6745 deviations.
double NoiseOf(std::span<const ScanRecord> raw, std::size_t channel) {
    std::vector<double> differences;
    for (std::size_t i = 0; i + 3 < raw.size(); ++i)
        differences.push_back(std::abs(ValueAt(raw, i + 3, channel) - 3 * ValueAt(raw, i + 2, channel) +
                                       3 * ValueAt(raw, i + 1, channel) - ValueAt(raw, i, channel)));
    return Median(std::move(differences)) / (0.6745 * std::sqrt(20.0));
}

// Scans at which a channel stays at its highest value for at least three scans, as a part of all.
double SaturatedPart(std::span<const ScanRecord> raw) {
    std::vector<char> flat(raw.size(), 0);
    for (std::size_t c = 0; c < channelCount; ++c) {
        double highest = 0;
        for (std::size_t i = 0; i < raw.size(); ++i)
            highest = std::max(highest, ValueAt(raw, i, c));
        for (std::size_t i = 0; i + 2 < raw.size() && highest > 0; ++i)
            if (ValueAt(raw, i, c) == highest && ValueAt(raw, i + 1, c) == highest && ValueAt(raw, i + 2, c) == highest)
                flat[i] = flat[i + 1] = flat[i + 2] = 1;
    }
    const auto count = std::count(flat.begin(), flat.end(), 1);
    return raw.empty() ? 0 : static_cast<double>(count) / static_cast<double>(raw.size());
}

}  // namespace

CCalledPlaces PlacesOf(const CSampleInfo& info) {
    const CAnalysisInfo& analysis = info.analysis;
    const auto count = std::min(analysis.peakPositions.size(), analysis.sequence.size());
    CCalledPlaces places{
        {analysis.peakPositions.begin(), analysis.peakPositions.begin() + static_cast<std::ptrdiff_t>(count)},
        analysis.sequence.substr(0, count),
        GoodRegion(analysis),
        {}};
    for (std::size_t c = 0; c < channelCount; ++c)
        places.channels[c] = info.channelBase[c][0];
    return places;
}

CRawFigures MeasureRaw(const CCalledPlaces& places, std::span<const ScanRecord> raw) {
    constexpr std::size_t minBases = 10;  // for the median of a channel
    CRawFigures figures;
    std::vector<double> all;
    std::array<std::vector<double>, channelCount> own;
    std::size_t first = raw.size(), last = 0;
    for (std::size_t i = places.good.start; i < places.good.start + places.good.length && i < places.scans.size();
         ++i) {
        if (places.scans[i] < 0 || static_cast<std::size_t>(places.scans[i]) >= raw.size()) continue;
        const auto scan = static_cast<std::size_t>(places.scans[i]);
        first = std::min(first, scan);
        last = std::max(last, scan);
        double highest = 0;
        for (std::size_t c = 0; c < channelCount; ++c) {
            const double height = HeightAt(raw, scan, c);
            highest = std::max(highest, height);
            if (places.letters[i] == places.channels[c]) own[c].push_back(height);
        }
        all.push_back(highest);
    }
    if (all.empty()) return figures;
    figures.signal = Median(std::move(all));
    const auto region = raw.subspan(first, last - first + 1);
    double noise = 0;
    for (std::size_t c = 0; c < channelCount; ++c) {
        noise += NoiseOf(region, c) / channelCount;
        if (own[c].size() >= minBases) figures.heights[c] = Median(std::move(own[c]));
    }
    figures.noise = noise;
    figures.saturated = SaturatedPart(region);
    figures.scansBefore = first;
    figures.scansAfter = raw.size() - 1 - last;
    return figures;
}

}  // namespace lanetools
