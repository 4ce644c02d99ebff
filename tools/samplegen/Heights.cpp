// SPDX-License-Identifier: MIT
#include "samplegen/Heights.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace samplegen {

namespace {

// A random factor with mean 1 and the given standard deviation.
double Vary(double deviation, CRandom& random) {
    constexpr double min = 0.35;
    return std::max(min, 1 + deviation * random.Normal());
}

}  // namespace

double PlainHeight(char before, char base, CRandom& random) {
    const double height = Vary(0.2, random);
    return before == 'A' && base == 'G' ? 0.6 * height : height;
}

double RealHeight(char before, char base, CRandom& random) {
    constexpr std::string_view letters = "ACGT";
    // Measured, medians. Row: the letter before, column: the letter.
    static constexpr double usual[4][4] = {
        {0.95, 0.98, 0.75, 1.00},
        {0.81, 1.04, 0.84, 1.01},
        {1.31, 0.88, 1.08, 0.79},
        {1.05, 1.05, 1.29, 1.05},
    };
    const double height = Vary(0.18, random);
    const std::size_t row = letters.find(before), column = letters.find(base);
    return row < 4 && column < 4 ? usual[row][column] * height : height;
}

}  // namespace samplegen
