// SPDX-License-Identifier: MIT
#include "lanecall/PeakFit.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace lanecall {

namespace {

constexpr std::size_t reach = 4;  // calls to either side whose peaks overlap with that of a call

struct Gaussian {
    double height, deviation;
};

// A lone peak of height 1 after the filter: the filter subtracts a part of it, widened by the running mean.
struct Peak {
    double scan;
    Gaussian narrow, wide;
};

Peak PeakOf(double scan, double deviation, const HumpFilter& filter) {
    const double wide = std::sqrt(deviation * deviation + filter.deviation * filter.deviation);
    return {scan, {1, deviation}, {-filter.part.At(scan) * deviation / wide, wide}};
}

// The values of a Gaussian at successive scans. Each is the one before times a factor, and the factor changes by the
// same ratio each time: exp(-(u + 1)^2 / 2) = exp(-u^2 / 2) * exp(-u - 1/2).
class CGaussianWalk {
  public:
    CGaussianWalk(const Gaussian& shape, double offset) {
        const double square = 1 / (shape.deviation * shape.deviation);
        value = shape.height * std::exp(-0.5 * offset * offset * square);
        factor = std::exp(-(offset + 0.5) * square);
        ratio = std::exp(-square);
    }
    double Next() {
        const double now = value;
        value *= factor;
        factor *= ratio;
        return now;
    }

  private:
    double value, factor, ratio;
};

// The sum of each channel's curve times the peak.
PerChannel Projected(const Curves& flat, const Peak& peak) {
    constexpr double deviations = 3.5;  // beyond them a Gaussian is below 0.0022
    const double span = deviations * (peak.wide.height < 0 ? peak.wide.deviation : peak.narrow.deviation);
    const int from = std::max(0, static_cast<int>(std::ceil(peak.scan - span)));
    const int to = std::min(ScanCount(flat) - 1, static_cast<int>(peak.scan + span));
    CGaussianWalk narrow(peak.narrow, from - peak.scan), wide(peak.wide, from - peak.scan);
    PerChannel sums{};
    for (int i = from; i <= to; ++i) {
        const double value = narrow.Next() + wide.Next();
        for (std::size_t c = 0; c < channelCount; ++c)
            sums[c] += value * flat[c][static_cast<std::size_t>(i)];
    }
    return sums;
}

// The integral of the product of two Gaussians whose middles are `distance` apart.
double Product(const Gaussian& a, const Gaussian& b, double distance) {
    const double square = a.deviation * a.deviation + b.deviation * b.deviation;
    return a.height * b.height * a.deviation * b.deviation * std::sqrt(2 * std::numbers::pi / square) *
           std::exp(-0.5 * distance * distance / square);
}

double Overlap(const Peak& a, const Peak& b) {
    const double distance = b.scan - a.scan;
    return Product(a.narrow, b.narrow, distance) + Product(a.narrow, b.wide, distance) +
           Product(a.wide, b.narrow, distance) + Product(a.wide, b.wide, distance);
}

using Overlaps = std::array<double, reach + 1>;  // of a peak with itself and with those that follow

// By how much a height is taken to be smaller, by trial (0.03 to 0.06 do as well): a letter is claimed only if that is
// worth more than it costs. Most places have one letter. It takes more from a hump, which many small peaks would
// make up, than from a lone peak.
constexpr double doubt = 0.04;

// One round of the search for the least squares (Gauss and Seidel): each height in turn becomes the best one for the
// present heights of the others, 0 if it would be negative.
void Improve(std::vector<PerChannel>& heights, const std::vector<PerChannel>& sums,
             const std::vector<Overlaps>& overlaps) {
    const std::size_t count = heights.size();
    for (std::size_t i = 0; i < count; ++i) {
        PerChannel rest = sums[i];
        for (std::size_t k = 1; k <= std::min(reach, i); ++k)
            for (std::size_t c = 0; c < channelCount; ++c)
                rest[c] -= overlaps[i - k][k] * heights[i - k][c];
        for (std::size_t k = 1; k <= std::min(reach, count - 1 - i); ++k)
            for (std::size_t c = 0; c < channelCount; ++c)
                rest[c] -= overlaps[i][k] * heights[i + k][c];
        for (std::size_t c = 0; c < channelCount; ++c)
            heights[i][c] = std::max(0.0, rest[c] / overlaps[i][0] - doubt);
    }
}

}  // namespace

std::vector<PerChannel> FitPeaks(const Curves& flat, const std::vector<Call>& calls, const CTrack& widths,
                                 const HumpFilter& filter) {
    constexpr int rounds = 15;          // 25 give the same letters
    constexpr double minDeviation = 1;  // scans; narrower Gaussians have no sums that equal their integrals
    const std::size_t count = calls.size();
    std::vector<Peak> peaks;
    std::vector<PerChannel> sums;
    for (const Call& call : calls) {
        peaks.push_back(PeakOf(call.scan, std::max(minDeviation, widths.At(call.scan)), filter));
        sums.push_back(Projected(flat, peaks.back()));
    }
    std::vector<Overlaps> overlaps(count);
    for (std::size_t i = 0; i < count; ++i)
        for (std::size_t k = 0; k <= std::min(reach, count - 1 - i); ++k)
            overlaps[i][k] = Overlap(peaks[i], peaks[i + k]);
    std::vector<PerChannel> heights(count, PerChannel{});
    for (int round = 0; round < rounds; ++round)
        Improve(heights, sums, overlaps);
    return heights;
}

void CorrectLetters(std::vector<Call>& calls, const std::vector<PerChannel>& heights) {
    // By trial: 1.2 to 1.8 and 0.1 to 0.2 do as well. The height keeps two small remains from being compared, between
    // two calls that share a peak.
    constexpr double ratio = 1.5, least = 0.15;
    for (std::size_t i = 0; i < calls.size(); ++i) {
        const auto tallest = std::max_element(heights[i].begin(), heights[i].end());
        if (*tallest > ratio * heights[i][static_cast<std::size_t>(calls[i].channel)] + least)
            calls[i].channel = static_cast<int>(tallest - heights[i].begin());
    }
}

}  // namespace lanecall
