// SPDX-License-Identifier: MIT
// Big-endian numbers at the end of a growing block of bytes.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>
#include <vector>

using Bytes = std::vector<std::byte>;

// The low 16 bits of `value` in the byte order of a big-endian file.
inline std::uint16_t ToBigEndian(std::uint32_t value) {
    const auto word = static_cast<std::uint16_t>(value);
    return std::endian::native == std::endian::big ? word : static_cast<std::uint16_t>(word << 8 | word >> 8);
}

// All append to `out`: the low 8, 16 or 32 bits of `value`, the characters of `text`, or `count` zero bytes.
inline void Put8(Bytes& out, std::uint32_t value) {
    out.push_back(static_cast<std::byte>(value & 0xFF));
}

inline void Put16(Bytes& out, std::uint32_t value) {
    Put8(out, value >> 8);
    Put8(out, value);
}

inline void Put32(Bytes& out, std::uint32_t value) {
    Put16(out, value >> 16);
    Put16(out, value);
}

inline void PutText(Bytes& out, std::string_view text) {
    std::transform(text.begin(), text.end(), std::back_inserter(out), [](char c) { return static_cast<std::byte>(c); });
}

inline void PutZeros(Bytes& out, std::size_t count) {
    out.resize(out.size() + count);
}
