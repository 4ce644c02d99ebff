// SPDX-License-Identifier: MIT
// Removes the slowly changing background under the peaks.
#pragma once

#include "lanecall/Curves.h"

namespace lanecall {

// Subtracts the level to which the curve returns between its peaks: its running minimum over `window` scans, made
// smooth. Peaks and groups of peaks narrower than `window` stay.
void RemoveBaseline(Curve& curve, int window);

}  // namespace lanecall
