// Where the peaks of each channel stand on the grid of the bases.
#pragma once

#include <array>
#include <complex>
#include <vector>

#include "lanecall/Spacing.h"

namespace lanecall {

// The longer a channel's number, the clearer its rhythm at the known spacing; the angle says where on the grid its
// peaks stand, a full turn for a spacing.
using Phasor = std::complex<double>;
using Phasors = std::vector<std::array<Phasor, channelCount>>;  // one for each knot of the spacing

// From the peaks within 240 scans of each knot. The spacing must have been found.
Phasors RhythmOf(const ImpulseLists& impulses, const Spacing& spacing);

}  // namespace lanecall
