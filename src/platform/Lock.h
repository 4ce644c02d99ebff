// SPDX-License-Identifier: MIT
// Advisory locks, with which several processes of this program take turns. For the files of this folder only.
#pragma once

#include "platform/Descriptor.h"
#include "platform/Error.h"

namespace platform::host {

// Locks the open file or folder until it is closed. EBUSY if another process holds the lock for 5 s. If the volume does
// not support locks it counts as locked.
Error Lock(const Descriptor& file);

}  // namespace platform::host
