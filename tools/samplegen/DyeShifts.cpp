// SPDX-License-Identifier: MIT
#include "samplegen/DyeShifts.h"

#include <array>
#include <cstddef>

#include "samplegen/Knots.h"
#include "samplegen/SpacingCurve.h"

namespace samplegen {

namespace {

constexpr std::size_t places = 7;
constexpr std::array<double, places> bases = {32, 50, 75, 120, 225, 400, 600};

// Measured: scans by which a letter comes later than the mean of the four at these bases, medians over real reads.
struct Chemistry {
    std::array<double, places> a, c, g, t;
};

constexpr Chemistry common = {
    .a = {0.8, 1.0, 0.7, 0.4, 0.3, 0.3, 0.3},
    .c = {0.2, -0.2, 0.0, 0.1, 0.4, 0.6, 0.6},
    .g = {-6.0, -7.0, -7.2, -7.0, -6.4, -5.9, -5.4},
    .t = {5.4, 6.4, 7.0, 6.5, 5.6, 5.0, 4.5},
};

// Not measured before base 40; the values of base 50 are used there.
constexpr Chemistry early = {
    .a = {1.4, 1.4, 1.3, 1.3, 1.2, 0.7, 0.8},
    .c = {4.0, 4.0, 3.2, 3.1, 2.4, 2.0, 1.4},
    .g = {-7.2, -7.2, -6.6, -5.8, -4.8, -3.9, -2.7},
    .t = {1.3, 1.3, 1.1, 1.2, 1.1, 1.1, 0.4},
};

const std::array<double, places>& ScansOf(const Chemistry& chemistry, char letter) {
    if (letter == 'A') return chemistry.a;
    if (letter == 'C') return chemistry.c;
    return letter == 'G' ? chemistry.g : chemistry.t;
}

}  // namespace

bool AreRealShifts(const std::string& name) {
    return name == "none" || name == "common" || name == "early";
}

double RealShift(const std::string& name, char letter, double n) {
    if (name == "none") return 0;
    const auto& scans = ScansOf(name == "early" ? early : common, letter);
    std::array<Knot, places> knots{};
    for (std::size_t k = 0; k < places; ++k)
        knots[k] = {bases[k], scans[k] / RealSpacing(bases[k])};
    return Interpolate(knots, n);
}

}  // namespace samplegen
