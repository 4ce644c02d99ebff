// SPDX-License-Identifier: MIT
// The checksum of sample files.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

// Exclusive-or of the 32-bit words of `bytes`; up to 3 bytes that remain at the end are ignored.
inline std::uint32_t XorWords(std::span<const std::byte> bytes) {
    std::uint64_t pairs = 0;
    std::size_t at = 0;
    for (; at + 8 <= bytes.size(); at += 8) {
        std::uint64_t two;
        std::memcpy(&two, bytes.data() + at, 8);
        pairs ^= two;
    }
    std::uint32_t words = static_cast<std::uint32_t>(pairs) ^ static_cast<std::uint32_t>(pairs >> 32);
    if (at + 4 <= bytes.size()) {
        std::uint32_t last;
        std::memcpy(&last, bytes.data() + at, 4);
        words ^= last;
    }
    return words;
}
