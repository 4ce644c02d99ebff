// SPDX-License-Identifier: MIT
// One scan of a sample file: 20 bytes, little-endian.
//
//   offset  size  raw sample                 processed sample
//   0       4     current, unsigned 32-bit   current, unsigned 32-bit
//   4       16    channels 1 to 4, unsigned  channels 1 to 4, 32-bit floats
//
// The record itself does not show which of the two it is; a flag in the trailer does.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

constexpr std::size_t scanRecordSize = 20;

struct ScanRecord {
    std::array<std::uint32_t, 5> words;  // in the host's byte order; uninitialised unless made with {}

    std::uint32_t Word(int i) const { return words[static_cast<std::size_t>(i)]; }
    float Float(int i) const { return std::bit_cast<float>(words[static_cast<std::size_t>(i)]); }
    void SetFloat(int i, float value) { words[static_cast<std::size_t>(i)] = std::bit_cast<std::uint32_t>(value); }
};
