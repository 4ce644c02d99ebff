// SPDX-License-Identifier: MIT
// How the height of a peak depends on the letter before it.
#pragma once

#include "samplegen/Random.h"

namespace samplegen {

// The height of a peak relative to the usual height of its letter; `before` is the letter before it, ' ' at the start.
// Plain heights vary by 20% (standard deviation) and a G after an A has 60%. Real heights are the medians of real reads
// after each letter, and vary by 18%.
double PlainHeight(char before, char base, CRandom& random);
double RealHeight(char before, char base, CRandom& random);

}  // namespace samplegen
