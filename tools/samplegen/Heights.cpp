#include "samplegen/Heights.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace samplegen {

namespace {

double Chance(double spread, CRandom& random) {
    return std::max(0.35, 1 + spread * random.Normal());
}

}  // namespace

double PlainHeight(char before, char base, CRandom& random) {
    const double chance = Chance(0.2, random);
    return before == 'A' && base == 'G' ? 0.6 * chance : chance;
}

double RealHeight(char before, char base, CRandom& random) {
    constexpr std::string_view letters = "ACGT";
    // Row: the letter before, column: the letter.
    static constexpr double means[4][4] = {
        {0.95, 0.98, 0.75, 1.00},
        {0.81, 1.04, 0.84, 1.01},
        {1.31, 0.88, 1.08, 0.79},
        {1.05, 1.05, 1.29, 1.05},
    };
    const double chance = Chance(0.18, random);
    const std::size_t row = letters.find(before), column = letters.find(base);
    return row < 4 && column < 4 ? means[row][column] * chance : chance;
}

}  // namespace samplegen
