#include "lanecall/Quality.h"

#include <algorithm>
#include <cmath>

namespace lanecall {

namespace {

// 1 far below the limit, 0.5 at it, 0 far above.
double Falling(double value, double limit, double steepness) {
    return 1 / (1 + std::pow(std::max(0.0, value) / limit, steepness));
}

// How uneven the bases round call i stand: the mean departure from the spacing over three gaps at either side.
double Unevenness(const std::vector<Call>& calls, std::size_t i) {
    constexpr std::size_t reach = 3;
    const std::size_t from = i > reach ? i - reach : 0, to = std::min(calls.size() - 1, i + reach);
    if (from == to) return 1;
    double sum = 0;
    for (std::size_t k = from; k < to; ++k) {
        const double gap = (calls[k + 1].scan - calls[k].scan) / std::max(1.0, calls[k].spacing);
        sum += std::min(1.0, std::abs(gap - 1));
    }
    return sum / static_cast<double>(to - from);
}

double JudgeCall(const Call& call, const Curves& sharp) {
    constexpr double doubtful = 0.45, weak = 0.2;
    const auto scan = static_cast<std::size_t>(call.scan);
    double own = 0, other = 0;
    for (std::size_t c = 0; c < channelCount; ++c) {
        const double height = sharp[c][scan];
        if (static_cast<int>(c) == call.channel)
            own = height;
        else
            other = std::max(other, height);
    }
    if (!(own > 0)) return 0;
    return Falling(other / own, doubtful, 3) * Falling(weak / own, 1, 2);
}

}  // namespace

std::vector<double> JudgeCalls(const std::vector<Call>& calls, const Curves& sharp) {
    constexpr double uneven = 0.25;
    constexpr int reach = 2;
    std::vector<double> alone(calls.size()), qualities(calls.size());
    for (std::size_t i = 0; i < calls.size(); ++i)
        alone[i] = JudgeCall(calls[i], sharp) * Falling(Unevenness(calls, i), uneven, 3);
    const int count = static_cast<int>(calls.size());
    for (int i = 0; i < count; ++i) {
        const int from = std::max(0, i - reach), to = std::min(count, i + reach + 1);
        double sum = 0;
        for (int k = from; k < to; ++k)
            sum += alone[static_cast<std::size_t>(k)];
        const auto at = static_cast<std::size_t>(i);
        qualities[at] = std::clamp(std::sqrt(alone[at] * sum / (to - from)), 0.0, 1.0);
    }
    return qualities;
}

GoodRegion FindGoodRegion(const std::vector<double>& qualities) {
    constexpr double middling = 0.5;
    GoodRegion best;
    double most = 0, sum = 0;
    int start = 0;
    for (int i = 0; i < static_cast<int>(qualities.size()); ++i) {
        if (sum <= 0) {
            sum = 0;
            start = i;
        }
        sum += qualities[static_cast<std::size_t>(i)] - middling;
        if (sum > most) {
            most = sum;
            best = {start, i};
        }
    }
    return best;
}

double OverallQuality(const std::vector<double>& qualities, GoodRegion region) {
    if (qualities.empty()) return 0;
    double sum = 0;
    for (int i = region.first; i <= region.last; ++i)
        sum += qualities[static_cast<std::size_t>(i)];
    return sum / (region.last - region.first + 1);
}

}  // namespace lanecall
