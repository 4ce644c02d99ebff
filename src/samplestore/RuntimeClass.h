// SPDX-License-Identifier: MIT
// Run-time class information: the name of an object's class, tests for its kind, and creation of objects.
#pragma once

#include <cstdint>
#include <memory>

class CObject;

// Describes a class at run time. These records exist for the whole life of the process.
struct CRuntimeClass {
    const char* name;
    std::uint32_t schema;
    std::unique_ptr<CObject> (*create)();  // null for a class that cannot be created from its record
    const CRuntimeClass* base;             // null for CObject itself

    bool IsDerivedFrom(const CRuntimeClass& other) const;
};

// The schema of classes that are not stored in archives.
constexpr std::uint32_t schemaNone = 0xFFFF;

class CObject {
  public:
    static const CRuntimeClass runtimeClass;

    virtual const CRuntimeClass& GetRuntimeClass() const;
    virtual ~CObject() = default;
    virtual void Serialize() {}
    virtual void AssertValid() const {}
    virtual void Dump() const {}

    bool IsKindOf(const CRuntimeClass& other) const { return GetRuntimeClass().IsDerivedFrom(other); }
};

// `object` as a T if it is of that class or derived from it, else null.
template <class T>
T* CastTo(CObject* object) {
    return object && object->IsKindOf(T::runtimeClass) ? static_cast<T*>(object) : nullptr;
}
