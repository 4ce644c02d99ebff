// SPDX-License-Identifier: MIT
#include "samplegen/MixedSites.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace samplegen {

std::string DrawSecondLetters(const std::string& bases, const Troubles& troubles, CRandom& random) {
    std::string second(bases.size(), ' ');
    if (troubles.mixedFrom == 0) return second;
    for (auto i = static_cast<std::size_t>(troubles.mixedFrom) - 1; i < bases.size(); ++i) {
        const bool isMixed = random.Below(troubles.mixedEvery) == 0;
        std::string others = "ACGT";
        std::erase(others, bases[i]);
        const char other = others[static_cast<std::size_t>(random.Below(3))];
        if (isMixed) second[i] = other;
    }
    return second;
}

char AmbiguityCode(char one, char other) {
    constexpr std::string_view pairs = "AC AG AT CG CT GT", codes = "MRWSYK";
    const char pair[] = {std::min(one, other), std::max(one, other)};
    return codes[pairs.find(std::string_view(pair, 2)) / 3];
}

}  // namespace samplegen
