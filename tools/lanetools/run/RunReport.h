// What has become of the plates of a run.
#pragma once

#include "lanetools/run/RunPlan.h"
#include "lanetools/samples/Summarize.h"

namespace lanetools {

// Reads and verifies the results of all plates, writes a table with a line for each of them on standard error, and
// gives the sum of all. Throws CInterrupted.
CStateCounts ReportPlates(const CRunPlan& plan);

}  // namespace lanetools
