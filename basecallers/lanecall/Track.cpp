// SPDX-License-Identifier: MIT
#include "lanecall/Track.h"

#include <algorithm>
#include <utility>

namespace lanecall {

CTrack::CTrack(double firstScan, double stepScans, std::vector<double> knots)
    : first(firstScan), step(stepScans), values(std::move(knots)) {}

CTrack BasesAlong(const CTrack& spacing) {
    CTrack bases = spacing;
    double count = 0;
    for (std::size_t k = 0; k < spacing.Size(); ++k) {
        if (k > 0) count += (spacing.ScanOf(k) - spacing.ScanOf(k - 1)) * 2 / (spacing[k - 1] + spacing[k]);
        bases[k] = count;
    }
    return bases;
}

void CTrack::Smooth(int reach) {
    const int count = static_cast<int>(values.size());
    std::vector<double> medians(values.size());
    std::vector<double> window;
    for (int i = 0; i < count; ++i) {
        window.assign(values.begin() + std::max(0, i - reach), values.begin() + std::min(count, i + reach + 1));
        const auto middle = window.begin() + static_cast<std::ptrdiff_t>(window.size() / 2);
        std::nth_element(window.begin(), middle, window.end());
        medians[static_cast<std::size_t>(i)] = *middle;
    }
    for (int i = 0; i < count; ++i) {
        const int from = std::max(0, i - reach), to = std::min(count, i + reach + 1);
        double sum = 0;
        for (int k = from; k < to; ++k)
            sum += medians[static_cast<std::size_t>(k)];
        values[static_cast<std::size_t>(i)] = sum / (to - from);
    }
}

}  // namespace lanecall
