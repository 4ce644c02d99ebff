// SPDX-License-Identifier: MIT
// The data types of the quality model (QualityTable.h has its numbers).
#pragma once

#include <array>
#include <cstddef>
#include <span>

#include "lanecall/CallFeatures.h"

namespace lanecall {

// A function that is linear between `count` (at least 1) knots and constant beyond the first and the last. The places
// ascend strictly.
template <std::size_t maxCount>
struct KnotCurve {
    std::size_t count;
    std::array<double, maxCount> places;
    std::array<double, maxCount> values;

    double At(double place) const;
};

template <std::size_t maxCount>
double KnotCurve<maxCount>::At(double place) const {
    if (!(place > places[0])) return values[0];
    std::size_t right = 1;
    while (right < count && places[right] <= place)
        ++right;
    if (right == count) return values[count - 1];
    const double share = (place - places[right - 1]) / (places[right] - places[right - 1]);
    return values[right - 1] + share * (values[right] - values[right - 1]);
}

struct QualityModel {
    double base;                                       // log odds (natural) of an error before any feature is known
    std::array<KnotCurve<10>, featureCount> features;  // what the value of each feature adds to the log odds
    KnotCurve<64> phreds;                              // the Phred quality for a sum of log odds
};

}  // namespace lanecall
