// SPDX-License-Identifier: MIT
// A quantity that is known at some places and linear between them.
#pragma once

#include <cstddef>
#include <span>

namespace samplegen {

struct Knot {
    double at;
    double value;
};

// Linear between the two knots around `at`; before the first knot and after the last it is the value of that knot.
// There is at least one knot, and their places ascend.
inline double Interpolate(std::span<const Knot> knots, double at) {
    if (at <= knots.front().at) return knots.front().value;
    for (std::size_t k = 1; k < knots.size(); ++k) {
        const Knot &left = knots[k - 1], &right = knots[k];
        if (at < right.at) return left.value + (right.value - left.value) * (at - left.at) / (right.at - left.at);
    }
    return knots.back().value;
}

}  // namespace samplegen
