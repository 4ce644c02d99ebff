// SPDX-License-Identifier: MIT
// The ABD class of the trace writer: collects tags and writes them as an ABIF file, version 1.01.
//
// All numbers are big-endian.
//
//   offset   size    content
//   0        4       "ABIF"
//   4        2       version times 100: 101
//   6        28      entry of the directory itself: "tdir", number 1, type 1023, with its count and offset
//   34       94      zeros
//   128      ...     the values that need more than 4 bytes, in the order of the directory
//   ...      28 n    the directory: n entries in ascending order of name and number
//
// An entry:
//
//   offset   size    content
//   0        4       name
//   4        4       number
//   8        2       type (see AbifElement.h)
//   10       2       bytes of one element
//   12       4       elements
//   16       4       bytes of the value
//   20       4       offset of the value; a value of 4 bytes or fewer is stored here itself, left-aligned
//   24       4       0
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "platform/AtomicFile.h"
#include "tracewriter/AbifElement.h"
#include "tracewriter/Guid.h"
#include "tracewriter/Hresult.h"
#include "tracewriter/IAbdQualities.h"
#include "tracewriter/IAbdWriter.h"
#include "tracewriter/IUnknown.h"
#include "tracewriter/TagValue.h"

class CAbifFile final : public IUnknown, public IAbdWriter, public IAbdQualities {
  public:
    HRESULT QueryInterface(const Guid& id, void*& interface) override;

    HRESULT OpenFile(const std::string& path, std::int32_t mode, std::int32_t& opened) override;
    // E_UNEXPECTED without an open file, E_INVALIDARG for a name of another length than 4.
    HRESULT AddTag(const std::string& name, std::int32_t number, const CTagValue& value) override;
    // Adds the tags that readers need and that follow from others (see AddDerivedTags), and writes the file. After a
    // failure there is no file. E_UNEXPECTED without an open file.
    HRESULT CloseFile(std::int32_t& status) override;

    // E_UNEXPECTED without an open file.
    HRESULT SetQualities(std::span<const float> percent) override;

  private:
    using TagKey = std::pair<std::string, std::int32_t>;  // name and number

    platform::AtomicFile file;
    std::map<TagKey, AbifElement> tags;
    std::optional<std::vector<float>> qualities;  // percent, one per base, if they were passed

    void AddDerivedTags();
    void Write();
};
