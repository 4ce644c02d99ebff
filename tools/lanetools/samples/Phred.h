// SPDX-License-Identifier: MIT
// Qualities: the program stores percentages, everybody else reads Phred values.
#pragma once

#include <algorithm>
#include <cmath>

namespace lanetools {

inline constexpr double largestPhred = 93;  // the last one that FASTQ has a character for
// Stored percentages are 32-bit floats, so a Phred value is compared with this allowance (a stored 99.0 is Q20).
inline constexpr double phredAllowance = 1e-9;

// Probability that the call is wrong, 0 to 1, of a stored quality in percent; 1 for NaN.
inline double ErrorProbability(float percent) {
    return std::isnan(percent) ? 1.0 : std::clamp((100.0 - static_cast<double>(percent)) / 100.0, 0.0, 1.0);
}

// -10 log10 of that probability, 0 to largestPhred.
inline double Phred(float percent) {
    const double probability = ErrorProbability(percent);
    return probability > 0 ? std::clamp(-10 * std::log10(probability), 0.0, largestPhred) : largestPhred;
}

inline bool IsAtLeast(double phred, double limit) {
    return phred >= limit - phredAllowance;
}

}  // namespace lanetools
