// SPDX-License-Identifier: MIT
// Ctrl-C: noticed between two samples, so that no file is left half-written.
#pragma once

namespace lanetools {

// After this call Ctrl-C (SIGINT) and SIGTERM are noted and do not end the process; a system call that waits fails with
// EINTR. If the process has not ended five seconds later (it may wait in a call that some library repeats), or if a
// second signal is received, it ends at once, with ExitCode::Interrupted and without its temporary files.
void WatchInterrupt();
// True after one of them has been received. An error that a system call has reported since may come from it.
bool IsInterrupted() noexcept;
// Throws CInterrupted if IsInterrupted(). Call it before each sample or file.
void CheckInterrupt();

}  // namespace lanetools
