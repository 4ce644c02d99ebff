// The settings that apply to a sample.
#pragma once

#include "run/Plate.h"
#include "run/RunDriver.h"

// The settings of the sample's run; null outside a run.
inline const CBaseCallerSet* RunSettings(const CSampleFile& sample) {
    return sample.plate->driver ? sample.plate->driver->baseCallers.get() : nullptr;
}
