// The one table through which the classes of the trace writer are created.
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
#include "tracewriter/IUnknown.h"

class CClassTable {
  public:
    // Makes one object; a failing result comes without one.
    using Factory = std::function<HRESULT(std::unique_ptr<IUnknown>& object)>;

    std::map<Guid, Factory> classes;  // by CLSID
    // How many elements an array of a tag value gets when `length` are asked for; nothing when none is to be had.
    std::function<std::optional<std::size_t>(std::int32_t length)> grantArray;

    // The component's own classes and arrays.
    CClassTable();
    // REGDB_E_CLASSNOTREG for a class that is not in the table.
    HRESULT CreateInstance(const Guid& clsid, std::unique_ptr<IUnknown>& object) const;

    // The table in use.
    static CClassTable& Active();
    // Puts another table in its place, for tests, and gives back the former one.
    static CClassTable Replace(CClassTable table);
};

// One object of the component with the interface that was asked for. Lets go of both at its end.
template <class Interface>
class CInstance {
  public:
    // Creates the class of `Interface`. A failure of the creation is raised, but for E_NOINTERFACE: then, and when the
    // object lacks the interface, the instance is empty.
    CInstance() {
        void* found = nullptr;
        HRESULT result = CClassTable::Active().CreateInstance(Interface::clsid, object);
        if (result >= 0 && object) result = object->QueryInterface(Interface::iid, found);
        if (result != E_NOINTERFACE) Check(result);
        if (result >= 0) writer = static_cast<Interface*>(found);
    }
    // Another interface of the same object, which lives as long as this instance; null when the object lacks it.
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
