// How much earlier or later the fragments of each letter come, by the chemistry that marks them.
#pragma once

#include <string>

namespace samplegen {

// Whether there are shifts of that name: "none", or the chemistries "common" and "early" that real runs were made with.
bool AreRealShifts(const std::string& name);

// Of the peak of a letter at base n, counted from 0, in bases: later when above 0. The name is a known one.
double RealShift(const std::string& name, char letter, double n);

}  // namespace samplegen
