// SPDX-License-Identifier: MIT
// Folders that are given as a plate by mistake.
#pragma once

#include <string>

#include "lanetools/run/RunPlan.h"

namespace lanetools {

// What the folder of `plate`, whose `files` are known, holds instead of raw samples, and what to do about it: results
// of the program, files of an instrument, or plates. Empty if it is none of these.
std::string FindMistake(const CPlannedPlate& plate);

}  // namespace lanetools
