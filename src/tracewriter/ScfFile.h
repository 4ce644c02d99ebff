// SPDX-License-Identifier: MIT
// The SCF class of the trace writer: collects a chromatogram and writes it as an SCF file, version 3.00.
//
// All numbers are big-endian. A file of S scans, B bases and comments of C bytes (the closing NUL counted):
//
//   offset         size   content
//   0              4      ".scf"
//   4              4      S
//   8              4      offset of the samples: 128
//   12             4      B
//   16             8      clipped bases left and right: 0, not used
//   24             4      offset of the bases: 128 + 8 S
//   28             4      C
//   32             4      offset of the comments: 128 + 8 S + 12 B
//   36             4      version: "3.00"
//   40             4      bytes of a sample: 2
//   44             4      code set of the letters: 0
//   48             4      bytes of private data: 0
//   52             4      offset of the private data: end of the comments
//   56             72     zeros
//   128            8 S    curves of A, C, G and T, each S numbers of 16 bits, as differences of differences modulo 2^16
//   128 + 8 S      4 B    scan of each base's peak, counted from 0
//                  4 B    probabilities: B bytes for each of A, C, G, T
//                  B      letters
//                  3 B    zeros
//   ... + 12 B     C      lines "NAME=value", each with a line feed, and a NUL
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "tracewriter/BigEndian.h"
#include "tracewriter/Guid.h"
#include "tracewriter/Hresult.h"
#include "tracewriter/IScfSamples.h"
#include "tracewriter/IScfWriter.h"
#include "tracewriter/IUnknown.h"

class CScfFile final : public IUnknown, public IScfWriter, public IScfSamples {
  public:
    HRESULT QueryInterface(const Guid& id, void*& interface) override;

    // EFBIG, as an HRESULT, beyond 16,777,216 scans, which is more than any run has.
    HRESULT SetSampleCount(std::int32_t count) override;
    HRESULT SetBaseCount(std::int32_t count) override;
    HRESULT SetSampleSize(std::int32_t bits) override;
    // Values outside 0 to 65535 are stored as the nearest of these.
    HRESULT SetSample(std::int32_t a, std::int32_t c, std::int32_t g, std::int32_t t, std::int32_t index) override;
    HRESULT SetSamples(const std::array<std::span<const std::int32_t>, 4>& stretches, std::int32_t index) override;
    HRESULT SaveFile(const std::string& path) override;
    // A peak before the first scan is stored at scan 0.
    HRESULT AddBase(std::int32_t peakIndex, std::int32_t probA, std::int32_t probC, std::int32_t probG,
                    std::int32_t probT, std::uint32_t letter) override;
    // The text ends at its first NUL.
    HRESULT AddComment(const std::string& comment) override;

  private:
    struct Base {
        std::uint32_t peakIndex;
        std::array<std::uint8_t, 4> probabilities;
        std::uint8_t letter;
    };

    std::array<std::vector<std::uint16_t>, 4> curves;  // A, C, G, T
    std::vector<Base> bases;
    std::string comments;

    Bytes Encode() const;
    void PutHeader(Bytes& out) const;
    void PutBases(Bytes& out) const;
};
