// SPDX-License-Identifier: MIT
// The plates of a run, several at a time.
#pragma once

#include <map>
#include <string>

#include "lanetools/run/RunPlan.h"

namespace lanetools {

// Why samples have no result, by the path that the result would have, without extension.
using Losses = std::map<std::string, std::string>;

struct CRunOutcome {
    bool hasWorked = false;     // the program has begun at least one sample
    bool isIncomplete = false;  // a result may lack something although its sample is stored
    Losses losses;
};

// Runs the program over all plates of the plan. After Ctrl-C it ends all programs, leaves nothing half-written, and
// throws CInterrupted.
CRunOutcome RunPlates(const CRunPlan& plan);

}  // namespace lanetools
