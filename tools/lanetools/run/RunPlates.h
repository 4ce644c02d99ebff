// The plates of a run, several at a time.
#pragma once

#include "lanetools/run/RunPlan.h"

namespace lanetools {

struct CRunOutcome {
    bool hasWorked = false;     // the program has taken up at least one sample
    bool isIncomplete = false;  // a result may lack something although its sample is stored
};

// Runs the program over all plates of the plan. After Ctrl-C all of it is ended, nothing is left half-written, and
// CInterrupted is thrown.
CRunOutcome RunPlates(const CRunPlan& plan);

}  // namespace lanetools
