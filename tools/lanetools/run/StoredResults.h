// SPDX-License-Identifier: MIT
// What earlier runs have stored under the names of this run's results.
#pragma once

#include "lanetools/run/RunPlan.h"

namespace lanetools {

// Fills `damaged`, `foreign` and `unread` of a plan that is otherwise complete. A result that was set aside by a run
// that was killed counts as one under its own name. A stored result belongs to a raw sample if their runs started in
// the same second and, if the raw sample has a name, their names are equal. Throws CInterrupted.
void LookAtStoredResults(CRunPlan& plan);

}  // namespace lanetools
