// What the program needs of the host before it does anything.
#pragma once

namespace platform {

// Makes sure that standard input, output and error are open (to nothing when the starter closed them), so that no file
// ever gets their place and receives the program's texts; and that a reader of them who goes away, or a limit on the
// size of files, is an error of the write that meets it and not the end of the process. False when that cannot be had.
bool StartProcess();

}  // namespace platform
