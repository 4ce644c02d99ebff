// SPDX-License-Identifier: MIT
// Where the peaks of each channel lie between the grid lines of the base spacing.
#pragma once

#include <array>
#include <complex>
#include <vector>

#include "lanecall/Curves.h"
#include "lanecall/Impulses.h"
#include "lanecall/Spacing.h"

namespace lanecall {

// One complex number per channel: its angle is the position of the peaks on the grid (a full turn is one spacing), its
// length says how well the peaks keep to the grid.
using Phasor = std::complex<double>;
using Phasors = std::vector<std::array<Phasor, channelCount>>;  // for each knot of the spacing

// Uses the peaks within 240 scans of each knot. `spacing.found` must be true.
Phasors RhythmOf(const ImpulseLists& impulses, const Spacing& spacing);

}  // namespace lanecall
