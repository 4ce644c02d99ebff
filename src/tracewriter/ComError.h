// SPDX-License-Identifier: MIT
// The failure of an operation of the trace writer, as an exception.
#pragma once

#include <exception>
#include <string>

#include "tracewriter/Hresult.h"

class CComError : public std::exception {
  public:
    explicit CComError(HRESULT code);

    HRESULT Code() const { return code; }
    // The system's message for the code; without one, "IDispatch error #%d" for a code that an interface defines and
    // "Unknown error 0x%0lX" for any other. No line end.
    const std::string& ErrorMessage() const { return text; }
    const char* what() const noexcept override { return text.c_str(); }

  private:
    HRESULT code;
    std::string text;
};

// Throws CComError for a result below 0.
inline void Check(HRESULT result) {
    if (result < 0) throw CComError(result);
}
