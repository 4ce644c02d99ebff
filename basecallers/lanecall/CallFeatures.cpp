#include "lanecall/CallFeatures.h"

#include <algorithm>
#include <cmath>

namespace lanecall {

namespace {

constexpr double most = 4;  // of any share

double& Of(CallFeatures& features, Feature feature) {
    return features[static_cast<std::size_t>(feature)];
}

double Share(double part, double whole) {
    return whole > 0 ? std::clamp(part / whole, 0.0, most) : most;
}

// The curve's value at the nearest scan; 0 outside.
double ValueAt(const Curve& curve, double scan) {
    const auto at = static_cast<std::ptrdiff_t>(scan + 0.5);
    return at >= 0 && at < static_cast<std::ptrdiff_t>(curve.size()) ? curve[static_cast<std::size_t>(at)] : 0;
}

double HeightOf(const Curves& curves, const Call& call) {
    return std::max(0.0, ValueAt(curves[static_cast<std::size_t>(call.channel)], call.scan));
}

// The tallest of the other channels near the call.
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

double Departure(const Call& left, const Call& right) {
    const double spacing = std::max(1.0, 0.5 * (left.spacing + right.spacing));
    return std::min(1.0, std::abs((right.scan - left.scan) / spacing - 1));
}

// Lowest point of the letter's own curve between two calls of one letter, 0 for two letters.
double ValleyBetween(const Curves& sharp, const Call& left, const Call& right) {
    if (left.channel != right.channel) return 0;
    const Curve& curve = sharp[static_cast<std::size_t>(left.channel)];
    double lowest = std::min(HeightOf(sharp, left), HeightOf(sharp, right));
    const double top = lowest;
    for (double part : {0.35, 0.5, 0.65})
        lowest = std::min(lowest, ValueAt(curve, left.scan + part * (right.scan - left.scan)));
    return Share(std::max(0.0, lowest), top);
}

// Tallest curve half-way between two calls, their own letters apart: those show there by their flanks.
double PassedBetween(const Curves& sharp, const Call& left, const Call& right) {
    double tallest = 0;
    for (std::size_t c = 0; c < channelCount; ++c)
        if (static_cast<int>(c) != left.channel && static_cast<int>(c) != right.channel)
            tallest = std::max(tallest, ValueAt(sharp[c], 0.5 * (left.scan + right.scan)));
    return Share(tallest, std::min(HeightOf(sharp, left), HeightOf(sharp, right)));
}

// The calls within `reach` of call i: the first, and one past the last.
std::pair<std::size_t, std::size_t> Around(std::size_t i, std::size_t reach, std::size_t count) {
    return {i > reach ? i - reach : 0, std::min(count, i + reach + 1)};
}

}  // namespace

std::vector<CallFeatures> MeasureCalls(const std::vector<Call>& calls, const CallSurroundings& around) {
    constexpr std::size_t near = 2, even = 4, wide = 10;
    const std::size_t count = calls.size();
    std::vector<CallFeatures> all(count);
    std::vector<double> heights(count), rivals(count), departures(count, 1.0);
    for (std::size_t i = 0; i < count; ++i) {
        heights[i] = HeightOf(around.sharp, calls[i]);
        rivals[i] = std::min(1.5, Share(RivalOf(around.sharp, calls[i]), heights[i]));
        if (i + 1 < count) departures[i] = Departure(calls[i], calls[i + 1]);
    }
    for (std::size_t i = 0; i < count; ++i) {
        CallFeatures& features = all[i];
        const Call& call = calls[i];
        Of(features, Feature::rival) = rivals[i];
        const auto [nearFrom, nearTo] = Around(i, near, count);
        Of(features, Feature::rivalNear) = *std::max_element(rivals.begin() + static_cast<std::ptrdiff_t>(nearFrom),
                                                             rivals.begin() + static_cast<std::ptrdiff_t>(nearTo));
        const auto [from, to] = Around(i, wide, count);
        double sum = 0, heightSum = 0;
        for (std::size_t k = from; k < to; ++k) {
            sum += rivals[k];
            heightSum += heights[k];
        }
        Of(features, Feature::rivalAround) = sum / static_cast<double>(to - from);
        Of(features, Feature::rivalRaw) = Share(RivalOf(around.curves, call), HeightOf(around.curves, call));
        Of(features, Feature::height) = Share(heights[i] * static_cast<double>(to - from), heightSum);
        Of(features, Feature::gap) = std::max(i > 0 ? departures[i - 1] : 1.0, departures[i]);
        const auto [evenFrom, evenTo] = Around(i, even, count);
        double uneven = 0;
        for (std::size_t k = evenFrom; k + 1 < evenTo; ++k)
            uneven += departures[k];
        Of(features, Feature::unevenness) =
            evenTo - evenFrom > 1 ? uneven / static_cast<double>(evenTo - evenFrom - 1) : 1;
        Of(features, Feature::resolution) = Share(around.widths.At(call.scan), call.spacing);
        Of(features, Feature::noise) =
            std::min(1.0, around.noise[static_cast<std::size_t>(call.channel)].At(call.scan));
        double valley = 0, passed = 0;
        if (i > 0) {
            valley = ValleyBetween(around.sharp, calls[i - 1], call);
            passed = PassedBetween(around.sharp, calls[i - 1], call);
        }
        if (i + 1 < count) {
            valley = std::max(valley, ValleyBetween(around.sharp, call, calls[i + 1]));
            passed = std::max(passed, PassedBetween(around.sharp, call, calls[i + 1]));
        }
        Of(features, Feature::valley) = valley;
        Of(features, Feature::passed) = passed;
    }
    return all;
}

}  // namespace lanecall
