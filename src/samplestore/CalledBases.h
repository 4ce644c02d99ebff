// SPDX-License-Identifier: MIT
// The called bases of a processed trace.
#pragma once

#include <lanewright/basecaller.h>
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "samplestore/SampleInfo.h"

// One called base: a copy of a library's record and of its peaks.
class CCalledBase {
  public:
    // Copies `record` and `peaks`, which replace record.peaks and record.peakCount.
    CCalledBase(const BaseRecord& record, std::span<const PeakRecord> peaks);

    char Letter() const { return letter; }
    double Quality() const { return quality; }  // percent
    std::int32_t Descriptor() const { return descriptor; }
    const BaseStrengths& Strengths() const { return strengths; }
    std::span<const PeakRecord> Peaks() const {
        return peaks.empty() ? std::span(&onlyPeak, hasOnePeak ? 1 : 0) : std::span(peaks);
    }
    // Position of the first peak as a raw scan number; 0 for a base without peaks.
    float Position() const { return Peaks().empty() ? 0.0f : Peaks().front().position; }

  private:
    char letter;
    float quality;
    bool hasOnePeak;
    PeakRecord onlyPeak{};          // of a base with one peak: almost every one, and all from a file
    std::vector<PeakRecord> peaks;  // of a base with several peaks
    BaseStrengths strengths;
    std::int32_t descriptor;
};

// The bases in order, with the good region. Indices start at 0. For an index that does not exist (below 0, or Count()
// and above) each accessor returns the default in the comment after it.
class CCalledBases {
  public:
    float qualityIndex = 0;       // overall quality in percent
    std::int32_t goodStart = 0;   // base index of the first base of the good region
    std::int32_t goodLength = 0;  // length of the good region in bases

    std::int32_t Count() const { return static_cast<std::int32_t>(bases.size()); }
    void Append(CCalledBase base) { bases.push_back(std::move(base)); }
    // Reserves memory for `count` bases.
    void Reserve(std::int32_t count) { bases.reserve(static_cast<std::size_t>(std::max(count, 0))); }
    // Removes the bases; the good region and the quality stay.
    void RemoveAll() { bases.clear(); }
    std::span<const CCalledBase> All() const { return bases; }

    char GetLetter(std::int32_t i) const;                        // 'N'
    std::int32_t GetDescriptor(std::int32_t i) const;            // 0
    BaseStrengths GetStrengths(std::int32_t i) const;            // 1.0 each
    std::span<const PeakRecord> GetPeaks(std::int32_t i) const;  // empty
    double GetQuality(std::int32_t i) const;                     // 0.0
    // Position of the first peak of base i as a raw scan number; 0 if there is no such base or peak.
    float GetPosition(std::int32_t i) const;

    // Raw scans of the first and last base of the good region: the position plus 0.5, truncated; 0 if there is no such
    // base.
    std::int32_t GoodStartScan() const;
    std::int32_t GoodEndScan() const;

  private:
    const CCalledBase* Find(std::int32_t i) const;
    std::vector<CCalledBase> bases;
};
