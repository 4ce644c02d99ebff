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
void EndProcess();

}  // namespace platform
