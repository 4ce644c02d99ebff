// SPDX-License-Identifier: MIT
// Results of the trace writer's operations: 32-bit codes; those below 0 are failures.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/Error.h"

using HRESULT = std::int32_t;

constexpr HRESULT MakeHresult(std::uint32_t bits) {
    return static_cast<HRESULT>(bits);
}

constexpr HRESULT S_OK = 0;
constexpr HRESULT E_NOINTERFACE = MakeHresult(0x80004002);
constexpr HRESULT E_POINTER = MakeHresult(0x80004003);
constexpr HRESULT E_FAIL = MakeHresult(0x80004005);
constexpr HRESULT E_UNEXPECTED = MakeHresult(0x8000FFFF);
constexpr HRESULT E_OUTOFMEMORY = MakeHresult(0x8007000E);
constexpr HRESULT E_INVALIDARG = MakeHresult(0x80070057);
constexpr HRESULT REGDB_E_CLASSNOTREG = MakeHresult(0x80040154);
constexpr HRESULT DISP_E_BADINDEX = MakeHresult(0x8002000B);

// The codes that an interface may define for itself, from the first to the last. Their error texts number them from 0.
constexpr HRESULT firstInterfaceCode = MakeHresult(0x80040200);
constexpr HRESULT lastInterfaceCode = MakeHresult(0x8004FFFF);

// The code for an error of the host system, in a facility of this component; S_OK for no error.
HRESULT HresultFromErrno(platform::Error error);

// The system's message for a code, without a line end; nothing if it has none.
std::optional<std::string> SystemMessage(HRESULT code);
