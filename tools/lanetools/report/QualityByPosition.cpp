// SPDX-License-Identifier: MIT
#include "lanetools/report/QualityByPosition.h"

#include <algorithm>
#include <cmath>

#include "lanetools/samples/Phred.h"

namespace lanetools {

namespace {

// The value below which `share` of the sorted values lie, to one decimal.
double Quantile(const std::vector<float>& sorted, double share) {
    const double at = share * static_cast<double>(sorted.size() - 1);
    const auto below = static_cast<std::size_t>(at);
    const std::size_t above = std::min(below + 1, sorted.size() - 1);
    const double value = sorted[below] + (at - static_cast<double>(below)) * (sorted[above] - sorted[below]);
    return std::round(value * 10) / 10;
}

}  // namespace

void CQualityByPosition::Add(std::span<const float> percents) {
    ++reads;
    phreds.resize(std::max(phreds.size(), (percents.size() + step - 1) / step));
    for (std::size_t i = 0; i < percents.size(); ++i)
        phreds[i / step].push_back(static_cast<float>(Phred(percents[i])));
}

nlohmann::ordered_json CQualityByPosition::Quartiles() const {
    auto low = nlohmann::ordered_json::array(), median = low, high = low;
    for (std::vector<float> sorted : phreds) {
        if (sorted.size() * 4 < reads * step) break;
        std::sort(sorted.begin(), sorted.end());
        low.push_back(Quantile(sorted, 0.25));
        median.push_back(Quantile(sorted, 0.5));
        high.push_back(Quantile(sorted, 0.75));
    }
    return {{"step", step}, {"low", low}, {"median", median}, {"high", high}};
}

}  // namespace lanetools
