// Where in the run the read lies.
#pragma once

#include "lanecall/Curves.h"

namespace lanecall {

// The longest stretch in which peaks stand above the noise, however much lower than elsewhere they are. Takes curves
// without baseline, and the deviation of each channel's noise in their unit; empty when nothing stands out.
ScanRange FindSignal(const Curves& curves, const PerChannel& noise);

}  // namespace lanecall
