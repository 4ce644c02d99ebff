// Whole numbers from measured ones.
#pragma once

#include <algorithm>
#include <cstdint>

inline constexpr double largestWhole = 9.2e18;  // below the limit of 64 bits

// `value` without its fraction, at most largestWhole in either direction; 0 for NaN.
inline std::int64_t TruncateTo64(double value) {
    if (value != value) return 0;
    return static_cast<std::int64_t>(std::clamp(value, -largestWhole, largestWhole));
}

// `value` without its fraction, kept to 32 bits: the low half of the 64-bit whole number, so 3,000,000,000 survives as
// an unsigned word. 0 for what no 64-bit number holds and for NaN.
inline std::int32_t TruncateTo32(double value) {
    if (!(value > -largestWhole && value < largestWhole)) return 0;
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(static_cast<std::int64_t>(value)));
}
