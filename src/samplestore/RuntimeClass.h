// Classes that know their own name: creation by name and tests of kind at run time.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

class CObject;

// What is known of a class at run time. Records live for the whole process.
struct CRuntimeClass {
    const char* name;
    std::uint32_t schema;
    std::unique_ptr<CObject> (*create)();  // null for a class that is not created by name
    const CRuntimeClass* base;             // null for CObject itself

    bool IsDerivedFrom(const CRuntimeClass& other) const;
};

// The schema of classes that no archive stores.
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

// `object` as a T when it is of that kind, else null.
template <class T>
T* KindCast(CObject* object) {
    return object && object->IsKindOf(T::runtimeClass) ? static_cast<T*>(object) : nullptr;
}
