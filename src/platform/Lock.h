// SPDX-License-Identifier: MIT
// Advisory locks, with which several processes of this program take turns. For the files of this folder only.
#pragma once

#include "platform/Descriptor.h"
#include "platform/Error.h"

namespace platform::host {

inline constexpr int lockTimeout = 5000;  // ms

// Locks the open file until it is closed. EBUSY if another process holds the lock for 5 s. If the volume does not
// support locks it counts as locked. The file must be open for writing: network file systems lock nothing else.
Error Lock(const Descriptor& file);
// The same for one of several locks that may take 5 s together; `waited` is the sum of their waits, in ms.
Error Lock(const Descriptor& file, int& waited);

}  // namespace platform::host
