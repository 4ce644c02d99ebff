// What earlier runs have stored under the names of this run's results.
#pragma once

#include "lanetools/run/RunPlan.h"

namespace lanetools {

// Fills `damaged` and `foreign` of a plan that is complete otherwise. A stored result belongs to a raw sample when its
// run started in the same second and, where the raw sample has a name, when its name is the same. Throws CInterrupted.
void LookAtStoredResults(CRunPlan& plan);

}  // namespace lanetools
