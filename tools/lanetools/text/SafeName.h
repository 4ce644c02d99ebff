// SPDX-License-Identifier: MIT
// Names of files and folders that come from data, such as plate ids ("../../x", "p*" and "-x" exist in real files).
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace lanetools {

// Bytes of the longest name.
inline constexpr std::size_t longestName = 100;

// `text` (any bytes; read as UTF-8 or Latin-1) with "_" instead of each character that is not an ASCII letter, a
// digit, "_", "-", "+", "." or a blank, and instead of "." or "-" at the start; cut to longestName. Empty only for an
// empty text.
std::string SafeName(std::string_view text);

}  // namespace lanetools
