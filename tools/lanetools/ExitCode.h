// SPDX-License-Identifier: MIT
// Exit codes of lanetools, and the exceptions that lead to them.
#pragma once

#include <stdexcept>

namespace lanetools {

enum class ExitCode {
    Done = 0,
    Failed = 1,         // it could not be done
    Refused = 2,        // nothing was written: a wrong command line or value, or nothing to work on
    Incomplete = 3,     // done, but not for every sample
    Interrupted = 130,  // by Ctrl-C
};

// Thrown before anything is written if the request itself cannot be carried out. Its text is one sentence that names
// the file or switch. Any other std::exception that leaves a subcommand ends it with ExitCode::Failed.
class CRefused : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Thrown by CheckInterrupt after Ctrl-C.
class CInterrupted : public std::exception {
  public:
    const char* what() const noexcept override { return "interrupted"; }
};

}  // namespace lanetools
