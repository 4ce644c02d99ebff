// SPDX-License-Identifier: MIT
// Decides whether called bases are a read. The search for a row of bases finds one in noise too, and some of its calls
// look good by chance.
#pragma once

#include <vector>

#include "lanecall/Quality.h"
#include "lanecall/ReadBases.h"

namespace lanecall {

// Throws CUnreadable, with the reason, unless the good region has the marks of a read:
// - at least 10 bases, and together as much trust (the sum of 0.05 - error probability) as 10 sure ones;
// - somewhere 20 evenly spaced peaks in a row, of more than two letters: noise has no rhythm, and idle channels repeat
//   one letter;
// - peaks that are narrower than their distance.
// None of the limits depends on the number of calls, so that a short read in a long empty run is one too.
void RequireRead(const MeasuredCalls& measured, const std::vector<double>& qualities, GoodRegion good);

}  // namespace lanecall
