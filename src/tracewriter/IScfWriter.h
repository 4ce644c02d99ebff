// SPDX-License-Identifier: MIT
// Takes one SCF file in pieces and writes it.
//
// Order of calls: SetSampleSize, SetSampleCount, SetBaseCount, every SetSample, every AddBase, every AddComment,
// SaveFile. A file of comments alone needs SetSampleSize, AddComment and SaveFile. The file is complete when SaveFile
// returns.
#pragma once

#include <cstdint>
#include <string>

#include "tracewriter/Guid.h"
#include "tracewriter/Hresult.h"

class IScfWriter {
  public:
    static constexpr Guid clsid = ParseGuid("8F00BB80-5173-11D2-B3B9-006097937554");
    static constexpr Guid iid = ParseGuid("8F00BB7F-5173-11D2-B3B9-006097937554");

    // Number of scans; a negative number counts as 0.
    virtual HRESULT SetSampleCount(std::int32_t count) = 0;
    // Number of bases that will follow; a negative number counts as 0.
    virtual HRESULT SetBaseCount(std::int32_t count) = 0;
    // Bits of a sample: 16, else E_INVALIDARG.
    virtual HRESULT SetSampleSize(std::int32_t bits) = 0;
    // The values of the four curves at one scan; `index` counts from 0. DISP_E_BADINDEX beyond the sample count.
    virtual HRESULT SetSample(std::int32_t a, std::int32_t c, std::int32_t g, std::int32_t t, std::int32_t index) = 0;
    // Writes the file, which replaces one of that name. After a failure what was there is unchanged.
    virtual HRESULT SaveFile(const std::string& path) = 0;
    // `peakIndex` is the scan of the base's peak, counted as in SetSample; then four probabilities (0 to 255), and the
    // letter in the low byte.
    virtual HRESULT AddBase(std::int32_t peakIndex, std::int32_t probA, std::int32_t probC, std::int32_t probG,
                            std::int32_t probT, std::uint32_t letter) = 0;
    // One line: name, "=", value and a line feed.
    virtual HRESULT AddComment(const std::string& comment) = 0;

  protected:
    ~IScfWriter() = default;
};
