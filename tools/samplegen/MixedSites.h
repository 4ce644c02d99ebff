// SPDX-License-Identifier: MIT
// Mixed sites: places where the template has two letters, as a sample with two alleles has.
#pragma once

#include <string>

#include "samplegen/Random.h"
#include "samplegen/Troubles.h"

namespace samplegen {

// The second letter of each base, ' ' where there is none.
std::string DrawSecondLetters(const std::string& bases, const Troubles& troubles, CRandom& random);

// The ambiguity code of two different letters out of A, C, G and T, in any order.
char AmbiguityCode(char one, char other);

}  // namespace samplegen
