// SPDX-License-Identifier: MIT
// The letters that stand for several bases (the IUPAC codes).
#pragma once

#include <array>
#include <string_view>
#include <utility>

namespace callsagree {

// The bases that an upper-case ambiguity code stands for; empty for any other character.
constexpr std::string_view LettersOfCode(char code) {
    constexpr std::array<std::pair<char, std::string_view>, 11> codes = {{{'M', "AC"},
                                                                          {'R', "AG"},
                                                                          {'W', "AT"},
                                                                          {'S', "CG"},
                                                                          {'Y', "CT"},
                                                                          {'K', "GT"},
                                                                          {'V', "ACG"},
                                                                          {'H', "ACT"},
                                                                          {'D', "AGT"},
                                                                          {'B', "CGT"},
                                                                          {'N', "ACGT"}}};
    for (const auto& [letter, bases] : codes)
        if (letter == code) return bases;
    return {};
}

}  // namespace callsagree
