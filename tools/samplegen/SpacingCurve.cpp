// SPDX-License-Identifier: MIT
#include "samplegen/SpacingCurve.h"

#include "samplegen/Knots.h"

namespace samplegen {

// Measured on capillary runs of some 3.3 scans per second.
double RealSpacing(double n) {
    static constexpr Knot knots[] = {{0, 10.6},   {30, 11.4},  {75, 12.7},  {220, 14.3},
                                     {400, 14.9}, {600, 14.3}, {900, 12.5}, {1200, 10}};
    return Interpolate(knots, n);
}

}  // namespace samplegen
