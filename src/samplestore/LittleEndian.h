// SPDX-License-Identifier: MIT
// Reading and writing the fixed-width numbers of sample files. The only place that depends on their byte order.
#pragma once

#include <bit>
#include <cstdint>

// Scan records and the arrays of the property tree are copied between file and memory unchanged.
static_assert(std::endian::native == std::endian::little, "sample files are read and written without conversion");

inline std::uint16_t LoadU16(const std::uint8_t* from) {
    return static_cast<std::uint16_t>(from[0] | from[1] << 8);
}

inline std::uint32_t LoadU32(const std::uint8_t* from) {
    return from[0] | static_cast<std::uint32_t>(from[1]) << 8 | static_cast<std::uint32_t>(from[2]) << 16 |
           static_cast<std::uint32_t>(from[3]) << 24;
}

inline std::int32_t LoadI32(const std::uint8_t* from) {
    return static_cast<std::int32_t>(LoadU32(from));
}

inline float LoadFloat(const std::uint8_t* from) {
    return std::bit_cast<float>(LoadU32(from));
}

inline void StoreU32(std::uint8_t* to, std::uint32_t value) {
    for (int i = 0; i < 4; ++i)
        to[i] = static_cast<std::uint8_t>(value >> (8 * i));
}

inline void StoreI32(std::uint8_t* to, std::int32_t value) {
    StoreU32(to, static_cast<std::uint32_t>(value));
}
