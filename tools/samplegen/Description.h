// The description that goes into a sample file.
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
// Name of the well of that number, counted from 0 along the rows: "A01".
std::string WellName(int well, int wells);

// `separation` is the matrix that the sample states.
CSampleInfo DescribeSample(const Options& options, int well, const Matrix4& separation,
                           const std::vector<ScanRecord>& scans, double scansPerSecond);

}  // namespace samplegen
