// SPDX-License-Identifier: MIT
#include "tracewriter/ComError.h"

#include <cstdio>

namespace {

std::string Describe(HRESULT code) {
    if (const auto message = SystemMessage(code)) return message->substr(0, message->find_last_not_of("\r\n") + 1);
    char text[40];
    if (code > firstInterfaceCode && code <= lastInterfaceCode)
        std::snprintf(text, sizeof text, "IDispatch error #%d", code - firstInterfaceCode);
    else
        std::snprintf(text, sizeof text, "Unknown error 0x%0lX",
                      static_cast<unsigned long>(static_cast<std::uint32_t>(code)));
    return text;
}

}  // namespace

CComError::CComError(HRESULT failure) : code(failure), text(Describe(failure)) {}
