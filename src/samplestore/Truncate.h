// Whole numbers from measured ones.
#pragma once

#include <cstdint>

// `value` without its fraction, kept to 32 bits: the low half of the 64-bit whole number, so 3,000,000,000 survives as
// an unsigned word. 0 for what no 64-bit number holds and for NaN.
inline std::int32_t TruncateTo32(double value) {
    constexpr double limit = 9.2e18;
    if (!(value > -limit && value < limit)) return 0;
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(static_cast<std::int64_t>(value)));
}
