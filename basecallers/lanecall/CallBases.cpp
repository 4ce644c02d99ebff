#include "lanecall/CallBases.h"

#include <algorithm>
#include <cmath>

namespace lanecall {

namespace {

constexpr double nearest = 0.45, farthest = 1.7;  // of two neighbouring bases, in spacings
constexpr double spacingDeviation = 0.15;

std::size_t Strongest(const Curves& sharp, std::size_t scan) {
    std::size_t best = 0;
    for (std::size_t c = 1; c < channelCount; ++c)
        if (sharp[c][scan] > sharp[best][scan]) best = c;
    return best;
}

// What it is worth to have a base at a scan: about 0 for a usual peak, far below where there is none.
double Worth(double height) {
    constexpr double offset = 0.04, usual = 0.7, most = 0.35;
    return std::min(most, std::log((std::max(0.0, height) + offset) / (usual + offset)));
}

// What a distance from base to base costs: by the square near the spacing, in proportion far from it.
double DistanceCost(double distance) {
    const double u = std::abs(distance - 1) / spacingDeviation;
    return u < 2 ? 0.5 * u * u : 2 * u - 2;
}

}  // namespace

std::vector<Call> CallBases(const Curves& sharp, ScanRange range, const CTrack& spacing) {
    const int count = range.Length();
    std::vector<double> score(static_cast<std::size_t>(count)), worth(score.size());
    std::vector<int> before(score.size(), -1);
    int best = -1;
    for (int i = 0; i < count; ++i) {
        const auto at = static_cast<std::size_t>(i), scan = static_cast<std::size_t>(range.first + i);
        worth[at] = Worth(sharp[Strongest(sharp, scan)][scan]);
        const double distance = spacing.At(range.first + i);
        double most = i < 2 * distance ? 0 : -1e300;  // the first base lies near the start
        const int low = std::max(0, i - static_cast<int>(farthest * distance));
        const int high = i - std::max(1, static_cast<int>(std::ceil(nearest * distance)));
        for (int k = low; k <= high; ++k) {
            const double value = score[static_cast<std::size_t>(k)] - DistanceCost((i - k) / distance);
            if (value > most) {
                most = value;
                before[at] = k;
            }
        }
        score[at] = most + worth[at];
        if (i + 2 * distance >= count && (best < 0 || score[at] > score[static_cast<std::size_t>(best)])) best = i;
    }
    std::vector<Call> calls;
    for (int i = best; i >= 0; i = before[static_cast<std::size_t>(i)])
        calls.push_back({static_cast<double>(range.first + i),
                         static_cast<int>(Strongest(sharp, static_cast<std::size_t>(range.first + i)))});
    std::reverse(calls.begin(), calls.end());
    return calls;
}

}  // namespace lanecall
