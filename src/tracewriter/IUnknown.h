// What every class of the trace writer shows: a way to its interfaces.
#pragma once

#include "tracewriter/Guid.h"
#include "tracewriter/Hresult.h"

class IUnknown {
  public:
    virtual ~IUnknown() = default;
    // `interface` becomes the address of the interface class that `id` names; it lives as long as this object.
    // E_NOINTERFACE, with a null address, when there is none.
    virtual HRESULT QueryInterface(const Guid& id, void*& interface) = 0;
};
