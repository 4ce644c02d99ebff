// SPDX-License-Identifier: MIT
#include "tracewriter/ClassTable.h"

#include <new>

#include "tracewriter/AbifFile.h"
#include "tracewriter/ScfFile.h"

namespace {

template <class Class>
HRESULT Make(std::unique_ptr<IUnknown>& object) {
    object.reset(new (std::nothrow) Class);
    return object ? S_OK : E_OUTOFMEMORY;
}

std::optional<std::size_t> GrantAll(std::int32_t length) {
    if (length < 0) return std::nullopt;
    return static_cast<std::size_t>(length);
}

}  // namespace

CClassTable::CClassTable()
    : classes{{IScfWriter::clsid, Make<CScfFile>}, {IAbdWriter::clsid, Make<CAbifFile>}}, grantArray(GrantAll) {}

HRESULT CClassTable::CreateInstance(const Guid& clsid, std::unique_ptr<IUnknown>& object) const {
    const auto entry = classes.find(clsid);
    return entry == classes.end() ? REGDB_E_CLASSNOTREG : entry->second(object);
}

CClassTable& CClassTable::Active() {
    static CClassTable table;
    return table;
}

CClassTable CClassTable::Replace(CClassTable table) {
    return std::exchange(Active(), std::move(table));
}
