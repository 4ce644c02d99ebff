// SPDX-License-Identifier: MIT
// The start and the end of the process.
#pragma once

namespace platform {

// Prepares the process; call it first. Opens those of standard input, output and error that are closed to /dev/null, so
// that no other file gets their descriptor and receives the program's texts. Makes a broken pipe and an exceeded file
// size limit errors of the write instead of ending the process. False if any of this, or what follows, fails.
//
// Standard output is reserved for Print; descriptor 1 is redirected to standard error, so that what a library prints
// goes there. From here on a process that ends without EndProcess, by exit in a library, gets exit code 1 and a
// warning.
bool StartProcess();

// Marks the run as over: from now on the exit code is the one that main returns.
//
// A program that has started this one may want to know that it came to its end, which the exit code does not show if a
// library has ended the process (_exit). It names a descriptor in the environment variable LANEWRIGHT_END_DESCRIPTOR, 3
// or above and open for writing, and gets the line "end" on it here.
void EndProcess();

}  // namespace platform
