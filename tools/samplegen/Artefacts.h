// SPDX-License-Identifier: MIT
// Signals that do not come from bases: spikes and dye blobs.
#pragma once

#include "samplegen/Random.h"
#include "samplegen/Read.h"
#include "samplegen/Troubles.h"

namespace samplegen {

// Adds the numbers of spikes and blobs that `troubles` has to a read with its peaks. A read without bases, such as that
// of a failed well, gets the spikes only.
void AddArtefacts(Read& read, const Troubles& troubles, CRandom& random);

}  // namespace samplegen
