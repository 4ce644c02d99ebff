// SPDX-License-Identifier: MIT
// A second interface of the SCF class, which takes many scans of the curves in one call.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "tracewriter/Guid.h"
#include "tracewriter/Hresult.h"

class IScfSamples {
  public:
    static constexpr Guid iid = ParseGuid("5B1D0F6A-2C57-4E0B-9D43-7A8E61C2F30B");

    // The same as SetSample for each scan: `curves` are A, C, G and T, of equal length (else E_INVALIDARG), and begin
    // at the scan `index`, counted from 0. DISP_E_BADINDEX if they do not lie inside the sample count. A failure sets
    // nothing.
    virtual HRESULT SetSamples(const std::array<std::span<const std::int32_t>, 4>& curves, std::int32_t index) = 0;

  protected:
    ~IScfSamples() = default;
};
