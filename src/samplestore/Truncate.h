// SPDX-License-Identifier: MIT
// Conversion of floating-point numbers to integers, defined for every value.
#pragma once

#include <algorithm>
#include <cstdint>

inline constexpr double maxWhole = 9.2e18;  // below the limit of 64 bits

// `value` without its fraction, limited to -maxWhole..maxWhole; 0 for NaN.
inline std::int64_t TruncateTo64(double value) {
    if (value != value) return 0;
    return static_cast<std::int64_t>(std::clamp(value, -maxWhole, maxWhole));
}

// `value` without its fraction, as the low 32 bits of the 64-bit integer, so that 3,000,000,000 is preserved as an
// unsigned word. 0 for NaN and for values beyond maxWhole.
inline std::int32_t TruncateTo32(double value) {
    if (!(value > -maxWhole && value < maxWhole)) return 0;
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(static_cast<std::int64_t>(value)));
}
