// SPDX-License-Identifier: MIT
// The low bits of whole numbers, which is what the exported files store. The higher bits are dropped without a check.
#pragma once

#include <cstdint>

#include "samplestore/Truncate.h"

inline std::int32_t CutTo32(std::int64_t value) {
    return static_cast<std::int32_t>(value);
}
inline std::int16_t CutTo16(std::int64_t value) {
    return static_cast<std::int16_t>(value);
}
inline std::uint8_t CutTo8(std::int64_t value) {
    return static_cast<std::uint8_t>(value);
}
inline std::int16_t TruncateTo16(double value) {
    return CutTo16(TruncateTo32(value));
}
