// Light that is of no base: spikes and dye blobs.
#pragma once

#include "samplegen/Random.h"
#include "samplegen/Read.h"
#include "samplegen/Troubles.h"

namespace samplegen {

// Adds the spikes and the blobs that `troubles` asks for to a read that has its bases; one without any, as that of a
// failed well, gets the spikes alone.
void AddArtefacts(Read& read, const Troubles& troubles, CRandom& random);

}  // namespace samplegen
