// SPDX-License-Identifier: MIT
// Flashes that appear in all four channels at once. They come from dust or a bubble in the light path, not from a dye.
#pragma once

#include "lanecall/Curves.h"

namespace lanecall {

// Replaces each flash by a straight line between the scans on either side. `curves` have no baseline; `noise` is the
// standard deviation of each channel's noise, in the unit of the curves.
void RemoveSpikes(Curves& curves, const PerChannel& noise);

}  // namespace lanecall
