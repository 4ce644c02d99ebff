// SPDX-License-Identifier: MIT
// Calls into code that is not the program's own, such as the base-caller libraries.
#pragma once

#include <string_view>

namespace platform {

// Exists for the duration of a call into a library. Its destructor silently restores the state of the process: the
// working folder (that of the last SetCurrentFolder), the umask, the floating-point environment, the handling of
// SIGINT, SIGTERM and SIGPIPE, the resource limits as far as possible, and descriptor 1, which StartProcess has
// redirected to standard error.
//
// A process that the library ends (exit) gets exit code 1 and a warning with the two names; see EndProcess.
class GuestCall {
  public:
    // `sample` is empty for a call that does not concern a sample. The names are copied.
    GuestCall(std::string_view library, std::string_view sample) noexcept;
    ~GuestCall();
    GuestCall(const GuestCall&) = delete;
    GuestCall& operator=(const GuestCall&) = delete;
};

// For the files of this folder only.
namespace host {

// Remembers the current working folder as the program's own.
void KeepWorkingFolder() noexcept;
// Handles an exit that did not go through EndProcess: ends the process with exit code 1 and a warning.
void EndInsideGuest();

}  // namespace host

}  // namespace platform
