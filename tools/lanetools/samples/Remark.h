// SPDX-License-Identifier: MIT
// Why a called read is poor: sentences that a technician can act on. docs/summary.md lists them with their limits.
#pragma once

#include <string>

#include "lanetools/samples/RawFigures.h"

namespace lanetools {

// An early end, a late start, a weak or a saturated channel, with "; " between them; empty if there is nothing to say.
std::string RemarkOn(const CCalledPlaces& places, const CRawFigures& figures);

}  // namespace lanetools
