// SPDX-License-Identifier: MIT
// Ctrl-C: noticed between two samples, so that no file is left half-written.
#pragma once

namespace lanetools {

// After this call Ctrl-C (SIGINT) and SIGTERM are noted and do not end the process. A second one ends it at once.
void WatchInterrupt();
// True after one of them has been received.
bool IsInterrupted() noexcept;
// Throws CInterrupted if IsInterrupted(). Call it before each sample or file.
void CheckInterrupt();

}  // namespace lanetools
