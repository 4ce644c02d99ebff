// Ctrl-C: noticed between two samples, so that no file is left half-written.
#pragma once

namespace lanetools {

// From here on Ctrl-C (SIGINT) and SIGTERM are remembered instead of ending the process. A second one ends it at once.
void WatchInterrupt();
// True once one of them has come.
bool IsInterrupted() noexcept;
// Throws CInterrupted once one of them has come. Call it before each sample or file.
void CheckInterrupt();

}  // namespace lanetools
