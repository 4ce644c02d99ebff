// SPDX-License-Identifier: MIT
// The common base of the trace writer's classes: it gives access to their interfaces.
#pragma once

#include "tracewriter/Guid.h"
#include "tracewriter/Hresult.h"

class IUnknown {
  public:
    virtual ~IUnknown() = default;
    // `interface` becomes the address of the interface class that `id` names; it lives as long as this object.
    // E_NOINTERFACE, with a null address, if it has no such interface.
    virtual HRESULT QueryInterface(const Guid& id, void*& interface) = 0;
};
