// What the letter before a letter does to the height of its peak.
#pragma once

#include "samplegen/Random.h"

namespace samplegen {

// As a multiple of the usual height of the letter. Plain heights vary by 20%, and a G after an A is weak. Real ones are
// what the stored peaks of real runs have on average after each letter, and vary by 18%. `before` is ' ' at the start.
double PlainHeight(char before, char base, CRandom& random);
double RealHeight(char before, char base, CRandom& random);

}  // namespace samplegen
