// SPDX-License-Identifier: MIT
// The exception for a trace from which no bases can be called.
#pragma once

#include <stdexcept>

namespace lanecall {

// Thrown by the stages; what() is a sentence for the user.
class CUnreadable : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

}  // namespace lanecall
