// SPDX-License-Identifier: MIT
// A second interface of the ABD class, for callers that know the qualities of the bases more exactly than the whole
// percentages of "QVAL" can express.
#pragma once

#include <span>

#include "tracewriter/Guid.h"
#include "tracewriter/Hresult.h"

class IAbdQualities {
  public:
    static constexpr Guid iid = ParseGuid("A02B9D9F-9CAE-4417-8B50-438B1C8E7FD6");

    // `percent` has, for each base of "PBAS" in its order, the probability that the call is right. Must be called
    // between OpenFile and CloseFile, before or after the tags; a second list replaces the first. The qualities in the
    // file
    // ("PCON") are then computed from these values instead of "QVAL", provided that "QVAL" has as many elements.
    virtual HRESULT SetQualities(std::span<const float> percent) = 0;

  protected:
    ~IAbdQualities() = default;
};
