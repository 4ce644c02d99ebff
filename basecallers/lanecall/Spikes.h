// Flashes that show in all four channels at once: dust or a bubble in the light path, no dye.
#pragma once

#include "lanecall/Curves.h"

namespace lanecall {

// Replaces each flash by a straight line between the scans beside it. Takes curves without baseline; `noise` is the
// deviation of each channel's noise.
void RemoveSpikes(Curves& curves, const PerChannel& noise);

}  // namespace lanecall
