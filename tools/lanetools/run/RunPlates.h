// SPDX-License-Identifier: MIT
// The plates of a run, several at a time.
#pragma once

#include "lanetools/run/RunPlan.h"

namespace lanetools {

struct CRunOutcome {
    bool hasWorked = false;     // the program has begun at least one sample
    bool isIncomplete = false;  // a result may lack something although its sample is stored
};

// Runs the program over all plates of the plan. After Ctrl-C it ends all programs, leaves nothing half-written, and
// throws CInterrupted.
CRunOutcome RunPlates(const CRunPlan& plan);

}  // namespace lanetools
