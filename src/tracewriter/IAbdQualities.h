// A second interface of the ABD class, for callers that know the qualities of the bases more exactly than "QVAL" can
// say: in whole percent 99 and 99.99 are one.
#pragma once

#include <span>

#include "tracewriter/Guid.h"
#include "tracewriter/Hresult.h"

class IAbdQualities {
  public:
    static constexpr Guid iid = ParseGuid("A02B9D9F-9CAE-4417-8B50-438B1C8E7FD6");

    // `percent` holds the probability that the call is right for each base of "PBAS", in its order. Called between
    // OpenFile and CloseFile, before or after the tags; a second list replaces the first. The qualities of the file
    // ("PCON") are then made from these values, where "QVAL" has as many elements, and not from "QVAL".
    virtual HRESULT SetQualities(std::span<const float> percent) = 0;

  protected:
    ~IAbdQualities() = default;
};
