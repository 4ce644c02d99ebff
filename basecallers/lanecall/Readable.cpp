// SPDX-License-Identifier: MIT
#include "lanecall/Readable.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <string>
#include <utility>

#include "lanecall/Smoothing.h"
#include "lanecall/Unreadable.h"

namespace lanecall {

namespace {

constexpr int minBases = 10;
constexpr double perSureBase = 0.05;  // what a base without any doubt adds to the sum of the good region
// Mean departure of a gap from the mean gap, in mean gaps. Measured on idle ends of 118 runs, synthetic noise of many
// spectra and reads whose peaks were merged: mostly above 0.13 in noise, 0.02 to 0.07 in reads.
constexpr double maxUnevenness = 0.12;
constexpr double minBits = 1.4;  // entropy of the letters; two letters have 1 bit, four have 2
// Two Gaussian peaks of deviation s merge below a distance of 2 s; real reads reach 0.44.
constexpr double maxWidth = 0.6;  // standard deviation of a lone peak, in spacings

double Entropy(const std::vector<Call>& calls, int first, int end) {
    std::array<int, channelCount> counts{};
    for (int i = first; i < end; ++i)
        ++counts[static_cast<std::size_t>(calls[static_cast<std::size_t>(i)].channel)];
    double bits = 0;
    for (int count : counts)
        if (count > 0) bits -= count * std::log2(static_cast<double>(count) / (end - first)) / (end - first);
    return bits;
}

// How uneven the gaps of a row of calls are: the mean departure of a gap from their mean, in mean gaps.
double Unevenness(const std::vector<Call>& calls, int first, int last) {
    const double mean =
        (calls[static_cast<std::size_t>(last)].scan - calls[static_cast<std::size_t>(first)].scan) / (last - first);
    double sum = 0;
    for (int i = first; i < last; ++i)
        sum += std::abs(calls[static_cast<std::size_t>(i) + 1].scan - calls[static_cast<std::size_t>(i)].scan - mean);
    return mean > 0 ? sum / mean / (last - first) : 1;
}

// The least unevenness of 20 gaps in a row of the region (of all, if it has fewer) among rows of mixed letters.
double LeastUnevenness(const std::vector<Call>& calls, GoodRegion good) {
    const int row = std::min(20, good.last - good.first);
    double least = std::numeric_limits<double>::infinity();
    for (int first = good.first; first + row <= good.last; ++first)
        if (Entropy(calls, first, first + row) >= minBits)
            least = std::min(least, Unevenness(calls, first, first + row));
    return least;
}

double MedianWidth(const std::vector<CallFeatures>& features, GoodRegion good) {
    std::vector<double> widths;
    for (int i = good.first; i <= good.last; ++i)
        widths.push_back(features[static_cast<std::size_t>(i)][static_cast<std::size_t>(Feature::resolution)]);
    return Quantile(std::move(widths), 0.5);
}

[[noreturn]] void Refuse(const std::string& reason) {
    throw CUnreadable("No readable sequence: " + reason);
}

}  // namespace

void RequireRead(const MeasuredCalls& measured, const std::vector<double>& qualities, GoodRegion good) {
    if (good.last - good.first + 1 < minBases || TrustIn(qualities, good) < minBases * perSureBase)
        Refuse("nowhere can " + std::to_string(minBases) + " bases in a row be trusted");
    if (Entropy(measured.calls, good.first, good.last + 1) < minBits)
        Refuse("almost all peaks have the same letter, as in an idle channel");
    if (MedianWidth(measured.features, good) > maxWidth) Refuse("the peaks are so wide that they merge");
    if (LeastUnevenness(measured.calls, good) > maxUnevenness)
        Refuse("nowhere are 20 peaks in a row evenly spaced, as bases are");
}

}  // namespace lanecall
