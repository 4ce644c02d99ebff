// SPDX-License-Identifier: MIT
#include "lanecall/CallFeatures.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace lanecall {

namespace {

double& Of(CallFeatures& features, Feature feature) {
    return features[static_cast<std::size_t>(feature)];
}

double Ratio(double part, double whole) {
    constexpr double maxRatio = 4;  // beyond the last knot of every curve of the quality model
    return whole > 0 ? std::clamp(part / whole, 0.0, maxRatio) : maxRatio;
}

// The curve's value at the nearest scan; 0 outside.
double ValueAt(const Curve& curve, double scan) {
    const auto at = static_cast<std::ptrdiff_t>(scan + 0.5);
    return at >= 0 && at < static_cast<std::ptrdiff_t>(curve.size()) ? curve[static_cast<std::size_t>(at)] : 0;
}

double HeightOf(const Curves& curves, const Call& call) {
    return std::max(0.0, ValueAt(curves[static_cast<std::size_t>(call.channel)], call.scan));
}

// The greatest of the other channels' heights, relative to that of the call's own.
double SecondOf(const PerChannel& heights, int channel) {
    double tallest = 0;
    for (std::size_t c = 0; c < channelCount; ++c)
        if (static_cast<int>(c) != channel) tallest = std::max(tallest, heights[c]);
    return Ratio(tallest, heights[static_cast<std::size_t>(channel)]);
}

// The greatest height of another channel near the call.
double RivalOf(const Curves& curves, const Call& call) {
    constexpr double reach = 0.2;  // spacings
    double tallest = 0;
    for (std::size_t c = 0; c < channelCount; ++c) {
        if (static_cast<int>(c) == call.channel) continue;
        for (double offset : {-reach, 0.0, reach})
            tallest = std::max(tallest, ValueAt(curves[c], call.scan + offset * call.spacing));
    }
    return tallest;
}

// How far the gap between two calls differs from the spacing, in spacings, 1 at most.
double Departure(const Call& left, const Call& right) {
    const double spacing = std::max(1.0, 0.5 * (left.spacing + right.spacing));
    return std::min(1.0, std::abs((right.scan - left.scan) / spacing - 1));
}

// Lowest point of the curve between two calls of one letter, relative to the lower call; 0 for two letters.
double ValleyBetween(const Curves& sharp, const Call& left, const Call& right) {
    if (left.channel != right.channel) return 0;
    const Curve& curve = sharp[static_cast<std::size_t>(left.channel)];
    double lowest = std::min(HeightOf(sharp, left), HeightOf(sharp, right));
    const double top = lowest;
    for (double part : {0.35, 0.5, 0.65})
        lowest = std::min(lowest, ValueAt(curve, left.scan + part * (right.scan - left.scan)));
    return Ratio(std::max(0.0, lowest), top);
}

// Height of the tallest third letter half-way between two calls, relative to the lower call. Their own letters do not
// count, because the flanks of their peaks reach there.
double PassedBetween(const Curves& sharp, const Call& left, const Call& right) {
    double tallest = 0;
    for (std::size_t c = 0; c < channelCount; ++c)
        if (static_cast<int>(c) != left.channel && static_cast<int>(c) != right.channel)
            tallest = std::max(tallest, ValueAt(sharp[c], 0.5 * (left.scan + right.scan)));
    return Ratio(tallest, std::min(HeightOf(sharp, left), HeightOf(sharp, right)));
}

// The calls within `reach` of call i: the first, and one past the last.
std::pair<std::size_t, std::size_t> Around(std::size_t i, std::size_t reach, std::size_t count) {
    return {i > reach ? i - reach : 0, std::min(count, i + reach + 1)};
}

// What is measured of each call by itself, before the features look at the calls around it.
struct Measurements {
    std::vector<double> heights;     // in the sharpened curves
    std::vector<double> rivals;      // the feature `rival`
    std::vector<double> departures;  // of the gap to the next call; 1 for the last call
};

Measurements MeasureEach(const std::vector<Call>& calls, const CallSurroundings& around) {
    constexpr double maxRival = 1.5;  // the last knot of the curves of `rival` and `rivalNear`
    const std::size_t count = calls.size();
    Measurements each{std::vector<double>(count), std::vector<double>(count), std::vector<double>(count, 1.0)};
    for (std::size_t i = 0; i < count; ++i) {
        each.heights[i] = HeightOf(around.sharp, calls[i]);
        each.rivals[i] = std::min(maxRival, Ratio(RivalOf(around.sharp, calls[i]), each.heights[i]));
        if (i + 1 < count) each.departures[i] = Departure(calls[i], calls[i + 1]);
    }
    return each;
}

void MeasureHeights(CallFeatures& features, const Measurements& each, std::size_t i) {
    constexpr std::size_t near = 2, wide = 10;  // calls to either side
    const auto& rivals = each.rivals;
    Of(features, Feature::rival) = rivals[i];
    const auto [nearFrom, nearTo] = Around(i, near, rivals.size());
    Of(features, Feature::rivalNear) = *std::max_element(rivals.begin() + static_cast<std::ptrdiff_t>(nearFrom),
                                                         rivals.begin() + static_cast<std::ptrdiff_t>(nearTo));
    const auto [from, to] = Around(i, wide, rivals.size());
    double rivalSum = 0, heightSum = 0;
    for (std::size_t k = from; k < to; ++k) {
        rivalSum += rivals[k];
        heightSum += each.heights[k];
    }
    const auto count = static_cast<double>(to - from);
    Of(features, Feature::rivalAround) = rivalSum / count;
    Of(features, Feature::height) = Ratio(each.heights[i] * count, heightSum);
}

void MeasureGaps(CallFeatures& features, const std::vector<double>& departures, std::size_t i) {
    constexpr std::size_t reach = 4;  // calls to either side
    Of(features, Feature::gap) = std::max(i > 0 ? departures[i - 1] : 1.0, departures[i]);
    const auto [from, to] = Around(i, reach, departures.size());
    double sum = 0;
    for (std::size_t k = from; k + 1 < to; ++k)
        sum += departures[k];
    Of(features, Feature::unevenness) = to - from > 1 ? sum / static_cast<double>(to - from - 1) : 1;
}

void MeasureNeighbours(CallFeatures& features, const Curves& sharp, const std::vector<Call>& calls, std::size_t i) {
    double valley = 0, passed = 0;
    if (i > 0) {
        valley = ValleyBetween(sharp, calls[i - 1], calls[i]);
        passed = PassedBetween(sharp, calls[i - 1], calls[i]);
    }
    if (i + 1 < calls.size()) {
        valley = std::max(valley, ValleyBetween(sharp, calls[i], calls[i + 1]));
        passed = std::max(passed, PassedBetween(sharp, calls[i], calls[i + 1]));
    }
    Of(features, Feature::valley) = valley;
    Of(features, Feature::passed) = passed;
}

}  // namespace

std::vector<CallFeatures> MeasureCalls(const std::vector<Call>& calls, const CallSurroundings& around) {
    const Measurements each = MeasureEach(calls, around);
    std::vector<CallFeatures> all(calls.size());
    for (std::size_t i = 0; i < calls.size(); ++i) {
        CallFeatures& features = all[i];
        const Call& call = calls[i];
        MeasureHeights(features, each, i);
        Of(features, Feature::rivalRaw) = Ratio(RivalOf(around.curves, call), HeightOf(around.curves, call));
        MeasureGaps(features, each.departures, i);
        Of(features, Feature::resolution) = Ratio(around.widths.At(call.scan), call.spacing);
        Of(features, Feature::noise) =
            std::min(1.0, around.noise[static_cast<std::size_t>(call.channel)].At(call.scan));
        MeasureNeighbours(features, around.sharp, calls, i);
        Of(features, Feature::second) = SecondOf(around.heights[i], call.channel);
    }
    return all;
}

}  // namespace lanecall
