// What the program needs of the host before it does anything.
#pragma once

namespace platform {

// Makes sure that standard input, output and error are open (to nothing when the starter closed them), so that no file
// ever gets their place and receives the program's texts; and that a reader of them who goes away, or a limit on the
// size of files, is an error of the write that meets it and not the end of the process. False when that cannot be had.
//
// Standard output is set aside: Print alone writes to it, and what the code of a library prints goes to standard error.
// From here on a process that ends without EndProcess (exit, in a library) ends with exit code 1 and a warning.
bool StartProcess();

// The run is over, and the exit code is what main returns.
void EndProcess();

}  // namespace platform
