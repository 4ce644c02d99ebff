// SPDX-License-Identifier: MIT
#include "lanecall/Quality.h"

#include <array>
#include <cmath>
#include <cstddef>

#include "lanecall/KnotCurve.h"
#include "lanecall/QualityTable.h"

namespace lanecall {

namespace {

constexpr double maxError = 0.05;  // the usual limit of Mott's trimming

}  // namespace

std::vector<double> JudgeCalls(const std::vector<CallFeatures>& features) {
    std::vector<double> qualities;
    qualities.reserve(features.size());
    for (const CallFeatures& one : features) {
        double doubt = qualityModel.base;
        for (std::size_t f = 0; f < featureCount; ++f)
            doubt += qualityModel.features[f].At(one[f]);
        const double phred = qualityModel.phreds.At(doubt);
        qualities.push_back(1 - std::pow(10.0, -phred / 10));
    }
    return qualities;
}

BaseRange BestStretch(const std::vector<double>& qualities, double limit) {
    BaseRange best;
    double bestSum = 0, sum = 0;
    int start = 0;
    for (int i = 0; i < static_cast<int>(qualities.size()); ++i) {
        if (sum <= 0) {
            sum = 0;
            start = i;
        }
        sum += qualities[static_cast<std::size_t>(i)] - limit;
        if (sum > bestSum) {
            bestSum = sum;
            best = {start, i + 1};
        }
    }
    return best;
}

GoodRegion FindGoodRegion(const std::vector<double>& qualities) {
    const BaseRange best = BestStretch(qualities, 1 - maxError);
    return best.Count() > 0 ? GoodRegion{best.first, best.end - 1} : GoodRegion{};
}

double TrustIn(const std::vector<double>& qualities, GoodRegion region) {
    double sum = 0;
    for (int i = region.first; i <= region.last && i < static_cast<int>(qualities.size()); ++i)
        sum += qualities[static_cast<std::size_t>(i)] - (1 - maxError);
    return sum;
}

double OverallQuality(const std::vector<double>& qualities, GoodRegion region) {
    if (qualities.empty()) return 0;
    double sum = 0;
    for (int i = region.first; i <= region.last; ++i)
        sum += qualities[static_cast<std::size_t>(i)];
    return sum / (region.last - region.first + 1);
}

}  // namespace lanecall
