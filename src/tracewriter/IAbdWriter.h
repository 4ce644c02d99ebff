// SPDX-License-Identifier: MIT
// Takes one ABD file as tagged values and writes it.
//
// Order of calls: OpenFile, AddTag, CloseFile. The file is complete when CloseFile returns.
#pragma once

#include <cstdint>
#include <string>

#include "tracewriter/Guid.h"
#include "tracewriter/Hresult.h"
#include "tracewriter/TagValue.h"

class IAbdWriter {
  public:
    static constexpr Guid clsid = ParseGuid("FD20540C-094D-11D3-9EF4-00104B943FC0");
    static constexpr Guid iid = ParseGuid("FD20540B-094D-11D3-9EF4-00104B943FC0");

    // `mode` is 0. `opened` is not 0 if the file is open.
    virtual HRESULT OpenFile(const std::string& path, std::int32_t mode, std::int32_t& opened) = 0;
    // `name` has four characters. A tag given twice keeps its last value; an empty value is left out.
    virtual HRESULT AddTag(const std::string& name, std::int32_t number, const CTagValue& value) = 0;
    // Writes the file, which replaces one of that name; `status` is 1 if that succeeded. After a failure what was there
    // is unchanged.
    virtual HRESULT CloseFile(std::int32_t& status) = 0;

  protected:
    ~IAbdWriter() = default;
};
