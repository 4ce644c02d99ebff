// SPDX-License-Identifier: MIT
// The troubles of the wells of a hard plate.
#pragma once

#include <string>

#include "samplegen/Random.h"
#include "samplegen/Troubles.h"

namespace samplegen {

// Random troubles for one read of up to `bases` bases. Most reads end before their peaks merge or sink into the noise;
// one in seven goes on beyond that.
Troubles DrawTroubles(int bases, double scansPerSecond, CRandom& random);

// The troubles in one line: first those that every read has, then the rare ones of this read.
std::string TroublesText(const Troubles& troubles);

}  // namespace samplegen
