// Removal of the slow background under the peaks.
#pragma once

#include "lanecall/Curves.h"

namespace lanecall {

// Subtracts the level that the curve falls back to between its peaks. Structures narrower than `window` scans stay.
void RemoveBaseline(Curve& curve, int window);

}  // namespace lanecall
