// SPDX-License-Identifier: MIT
// The letters for one base or several, from htslib's tables.
#pragma once

#include <htslib/hts.h>

#include <cstdint>

namespace lanetools {

// The bases of a letter: A 1, C 2, G 4, T 8. Letter case does not matter, U is T. 0 for any other character.
inline std::uint8_t BaseSet(char letter) {
    if (letter == 'U' || letter == 'u') return seq_nt16_table[static_cast<std::uint8_t>('T')];
    const bool isLetter = (letter >= 'A' && letter <= 'Z') || (letter >= 'a' && letter <= 'z');
    const std::uint8_t set = isLetter ? seq_nt16_table[static_cast<std::uint8_t>(letter)] : 0;
    const bool isUnknown = set == 15 && letter != 'N' && letter != 'n';  // the table takes all other letters for N
    return isUnknown ? 0 : set;
}

// The same as a capital letter, T for U, N for any other character.
inline char IupacLetter(char letter) {
    const std::uint8_t set = BaseSet(letter);
    return set == 0 ? 'N' : seq_nt16_str[set];
}

// Bases of the other strand.
inline std::uint8_t Complement(std::uint8_t set) {
    return static_cast<std::uint8_t>((set & 1) << 3 | (set & 2) << 1 | (set & 4) >> 1 | (set & 8) >> 3);
}

}  // namespace lanetools
