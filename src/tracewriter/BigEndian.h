// Big-endian numbers at the end of a growing block of bytes.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

using Bytes = std::vector<std::byte>;

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
