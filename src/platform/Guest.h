// Calls into code that is not the program's own, as the base-caller libraries are.
#pragma once

#include <string_view>

namespace platform {

// As long as it lives, the process is in the hands of a library. At its end everything is the program's own again, and
// silently so: the working folder (the one of the last SetCurrentFolder), the mask of new files, the floating-point
// environment, what SIGINT, SIGTERM and SIGPIPE do, the limits of the process as far as it may raise them, and
// descriptor 1, which leads to standard error once StartProcess has set standard output aside.
//
// A process that ends inside (exit) ends with exit code 1 and a warning with the two names; see EndProcess.
class GuestCall {
  public:
    // `sample` is empty for a call that is about no sample. The names are copied.
    GuestCall(std::string_view library, std::string_view sample) noexcept;
    ~GuestCall();
    GuestCall(const GuestCall&) = delete;
    GuestCall& operator=(const GuestCall&) = delete;
};

// For those of this folder only.
namespace host {

// Takes the working folder of now for the program's own.
void KeepWorkingFolder() noexcept;
// What to do when the process ends by anything but EndProcess: ends it with exit code 1 and a warning.
void EndInsideGuest();

}  // namespace host

}  // namespace platform
