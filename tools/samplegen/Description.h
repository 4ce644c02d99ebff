// SPDX-License-Identifier: MIT
// The description in a sample file: everything except the scans.
#pragma once

#include <string>
#include <vector>

#include "samplegen/Options.h"
#include "samplestore/SampleInfo.h"
#include "samplestore/ScanRecord.h"

namespace samplegen {

// A plate has 12 columns and 8 rows, or 24 and 16 when it needs more than 96 wells.
int PlateColumns(int wells);
int PlateRows(int wells);
// The name of a well such as "A01"; `well` counts from 0, row by row.
std::string WellName(int well, int wells);

// `separation` is the separation matrix that is stored in the sample.
CSampleInfo DescribeSample(const Options& options, int well, const Matrix4& separation,
                           const std::vector<ScanRecord>& scans, double scansPerSecond);

}  // namespace samplegen
