// SPDX-License-Identifier: MIT
// The results of a run, by plate.
#pragma once

#include "lanetools/run/RunPlan.h"
#include "lanetools/samples/Summarize.h"

namespace lanetools {

// Reads and verifies the results of all plates, writes a table with a line for each of them on standard error, and
// returns the sum of all. Throws CInterrupted.
CStateCounts ReportPlates(const CRunPlan& plan);

}  // namespace lanetools
