// SPDX-License-Identifier: MIT
#include "samplegen/Wander.h"

namespace samplegen {

CWander::CWander(std::size_t scanCount, double stepScans, double size, CRandom& random) : step(stepScans) {
    const auto count = static_cast<std::size_t>(static_cast<double>(scanCount) / step) + 2;
    double value = 0;
    for (std::size_t i = 0; i < count; ++i) {
        // A random walk that is pulled back to 0; 0.8^2 + 0.6^2 = 1 keeps its deviation at `size`.
        value = 0.8 * value + 0.6 * size * random.Normal();
        knots.push_back(value);
    }
}

double CWander::At(std::size_t scan) const {
    const double at = static_cast<double>(scan) / step;
    const auto knot = static_cast<std::size_t>(at);
    const double t = at - static_cast<double>(knot);
    return knots[knot] + (knots[knot + 1] - knots[knot]) * t * t * (3 - 2 * t);
}

}  // namespace samplegen
