// SPDX-License-Identifier: MIT
// The results of a run, by plate.
#pragma once

#include "lanetools/run/RunPlan.h"
#include "lanetools/run/RunPlates.h"
#include "lanetools/samples/Summarize.h"

namespace lanetools {

// Reads and verifies the results of all plates. Writes a table with a line for each of them on standard error and, of
// several plates, one for their sum; then which samples are not called and why, up to a screenful. `losses` are the
// reasons of those that have no result. Returns the sum of all. Throws CInterrupted.
CStateCounts ReportPlates(const CRunPlan& plan, const Losses& losses);

}  // namespace lanetools
