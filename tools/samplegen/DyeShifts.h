// SPDX-License-Identifier: MIT
// How much earlier or later the fragments of each letter come, depending on the chemistry.
#pragma once

#include <string>

namespace samplegen {

// Whether the name is one of "none", "common" and "early"; the last two are chemistries of real runs.
bool AreRealShifts(const std::string& name);

// The shift, in bases, of the peak of a letter at base n (counted from 0); above 0 it comes later. AreRealShifts(name)
// is true.
double RealShift(const std::string& name, char letter, double n);

}  // namespace samplegen
