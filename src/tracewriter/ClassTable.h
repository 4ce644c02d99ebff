// SPDX-License-Identifier: MIT
// The table through which the classes of the trace writer are created.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <utility>

#include "tracewriter/ComError.h"
#include "tracewriter/Guid.h"
#include "tracewriter/Hresult.h"
#include "tracewriter/IUnknown.h"

class CClassTable {
  public:
    // Creates one object, which the caller owns; none with a result below 0.
    using Factory = std::function<HRESULT(std::unique_ptr<IUnknown>& object)>;

    std::map<Guid, Factory> classes;  // by CLSID
    // How many elements the array of a tag value gets if `length` are asked for; nothing if there can be no such array.
    std::function<std::optional<std::size_t>(std::int32_t length)> grantArray;

    // The component's own classes and arrays.
    CClassTable();
    // REGDB_E_CLASSNOTREG for a class that is not in the table.
    HRESULT CreateInstance(const Guid& clsid, std::unique_ptr<IUnknown>& object) const;

    // The table in use.
    static CClassTable& Active();
    // Replaces it, for tests, and returns the former one.
    static CClassTable Replace(CClassTable table);
};

// One object of the component, owned, and the requested interface of it.
template <class Interface>
class CInstance {
  public:
    // Creates an object of the class that belongs to `Interface`. Throws CComError if that fails, except with
    // E_NOINTERFACE: then, and if the object lacks the interface, the instance is empty.
    CInstance() {
        void* found = nullptr;
        HRESULT result = CClassTable::Active().CreateInstance(Interface::clsid, object);
        if (result >= 0 && object) result = object->QueryInterface(Interface::iid, found);
        if (result != E_NOINTERFACE) Check(result);
        if (result >= 0) writer = static_cast<Interface*>(found);
    }
    // Another interface of the same object, valid as long as this instance; null if the object lacks it.
    template <class Other>
    Other* Find() const {
        void* found = nullptr;
        return object && object->QueryInterface(Other::iid, found) >= 0 ? static_cast<Other*>(found) : nullptr;
    }

    explicit operator bool() const { return writer != nullptr; }
    Interface& operator*() const { return *writer; }
    Interface* operator->() const { return writer; }

  private:
    std::unique_ptr<IUnknown> object;
    Interface* writer = nullptr;
};
