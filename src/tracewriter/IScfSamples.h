// A second interface of the SCF class, which takes the curves in stretches instead of scan by scan.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "tracewriter/Guid.h"
#include "tracewriter/Hresult.h"

class IScfSamples {
  public:
    static constexpr Guid iid = ParseGuid("5B1D0F6A-2C57-4E0B-9D43-7A8E61C2F30B");

    // The curves of A, C, G and T, of one length (else E_INVALIDARG), from the scan at `index` (from 0) on. The same as
    // SetSample for each scan; DISP_E_BADINDEX, and nothing is set, when they do not lie inside the sample count.
    virtual HRESULT SetSamples(const std::array<std::span<const std::int32_t>, 4>& curves, std::int32_t index) = 0;

  protected:
    ~IScfSamples() = default;
};
