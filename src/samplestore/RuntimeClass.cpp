// SPDX-License-Identifier: MIT
#include "samplestore/RuntimeClass.h"

const CRuntimeClass CObject::runtimeClass{"CObject", schemaNone, nullptr, nullptr};

const CRuntimeClass& CObject::GetRuntimeClass() const {
    return runtimeClass;
}

bool CRuntimeClass::IsDerivedFrom(const CRuntimeClass& other) const {
    const CRuntimeClass* at = this;
    while (at && at != &other)
        at = at->base;
    return at != nullptr;
}
