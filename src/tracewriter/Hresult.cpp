// SPDX-License-Identifier: MIT
#include "tracewriter/Hresult.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

// Upper half of the codes that carry an errno value in their lower half.
constexpr std::uint32_t hostFacility = 0x82A00000;

constexpr std::array<std::pair<HRESULT, const char*>, 9> systemTexts{{
    {S_OK, "The operation completed successfully."},
    {E_NOINTERFACE, "No such interface supported"},
    {E_POINTER, "Invalid pointer"},
    {E_FAIL, "Unspecified error"},
    {E_UNEXPECTED, "Catastrophic failure"},
    {E_OUTOFMEMORY, "Not enough storage is available to complete this operation."},
    {E_INVALIDARG, "The parameter is incorrect."},
    {REGDB_E_CLASSNOTREG, "Class not registered"},
    {DISP_E_BADINDEX, "Invalid index."},
}};

}  // namespace

HRESULT HresultFromErrno(platform::Error error) {
    if (!error) return S_OK;
    if (error.Code() < 0 || error.Code() > 0xFFFF) return E_FAIL;
    return MakeHresult(hostFacility | static_cast<std::uint32_t>(error.Code()));
}

std::optional<std::string> SystemMessage(HRESULT code) {
    const auto known =
        std::find_if(systemTexts.begin(), systemTexts.end(), [code](const auto& entry) { return entry.first == code; });
    if (known != systemTexts.end()) return known->second;
    const std::uint32_t bits = static_cast<std::uint32_t>(code);
    if ((bits & 0xFFFF0000u) == hostFacility) return platform::Error(static_cast<int>(bits & 0xFFFFu)).Text();
    return std::nullopt;
}
