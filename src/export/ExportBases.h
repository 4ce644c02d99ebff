// The called bases as every output of sequence shows them.
#pragma once

#include <cstdint>
#include <vector>

#include "samplestore/CapTrace.h"

// Indices of the bases to show, in order: those of the whole trace, or of its good region, without the ones that the
// base caller marks as not to be shown.
std::vector<std::int32_t> ExportBases(const CProcessedTrace& trace, bool goodRegionOnly);
