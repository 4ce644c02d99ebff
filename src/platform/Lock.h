// Advisory locks, by which processes of ours take turns. For the files of this folder only.
#pragma once

#include "platform/Descriptor.h"
#include "platform/Error.h"

namespace platform::host {

// Locks the open file or folder until it is closed. EBUSY when another process holds the lock for more than 5 s. Where
// the volume knows no locks it counts as locked.
Error Lock(const Descriptor& file);

}  // namespace platform::host
