// SPDX-License-Identifier: MIT
#include "plugins/BaseCallerSet.h"

#include "run/RunDriver.h"

CBaseCallerSet::CBaseCallerSet(CRunDriver* owner) : driver(owner) {
    if (driver->unattended == 0) ReadGeneralSettings();
}

CBaseCallerSet::~CBaseCallerSet() {
    if (currentCaller) currentCaller->Unload();
}
