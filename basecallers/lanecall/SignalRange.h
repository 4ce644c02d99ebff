// Where in the run the read lies.
#pragma once

#include "lanecall/Curves.h"

namespace lanecall {

// The longest stretch in which peaks stand well above the noise and above a small share of the read's usual height.
// Takes curves without baseline; empty when nothing stands out.
ScanRange FindSignal(const Curves& curves);

}  // namespace lanecall
