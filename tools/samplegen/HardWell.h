// The troubles of the wells of a hard plate.
#pragma once

#include <string>

#include "samplegen/Random.h"
#include "samplegen/Troubles.h"

namespace samplegen {

// The troubles of one read of up to `bases` bases, at that scan rate. Most reads end where their peaks run together or
// sink into the noise, at the latest; one in seven goes on.
Troubles DrawTroubles(int bases, double scansPerSecond, CRandom& random);

// A line about them: what every read has, then what this one has besides.
std::string TroublesText(const Troubles& troubles);

}  // namespace samplegen
