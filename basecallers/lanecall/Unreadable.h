// What ends the work on a read that no bases can be called from.
#pragma once

#include <stdexcept>

namespace lanecall {

// Thrown by the stages; the text is the sentence that the user gets.
class CUnreadable : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

}  // namespace lanecall
