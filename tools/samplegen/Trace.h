// SPDX-License-Identifier: MIT
// Turns the peaks of a read into the scans that the detector records.
#pragma once

#include <cstdint>
#include <vector>

#include "samplegen/Random.h"
#include "samplegen/Read.h"
#include "samplegen/Troubles.h"
#include "samplestore/ScanRecord.h"

namespace samplegen {

// The greatest value of the detector, in counts.
constexpr std::uint32_t detectorLimit = 32767;

// The scans from the start of the run to 120 seconds after the end of the read.
std::vector<ScanRecord> RecordRun(const Read& read, const Troubles& troubles, double scansPerSecond, CRandom& random);

}  // namespace samplegen
