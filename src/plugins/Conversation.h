// SPDX-License-Identifier: MIT
// One conversation with a base-caller library about one sample. docs/library-interface.md describes it from the
// library's side.
//
// What a library returns remains its property, and is not trusted: every number is checked before it sizes an array,
// indexes one or limits a loop. The length of the library's own arrays cannot be checked, so a count or range that no
// run can have is rejected before the first element is read.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "plugins/EntryPoints.h"
#include "plugins/RawArrays.h"
#include "samplestore/CalledBases.h"
#include "samplestore/CapTrace.h"
#include "samplestore/SampleInfo.h"

class CDyeMatrix;
class CSampleFile;

class CConversation {
  public:
    // `entryPoints` must not lack any that is needed. Both arguments must outlive the conversation.
    CConversation(const CEntryPoints& entryPoints, const CCapTrace& rawTrace) : library(entryPoints), raw(rawTrace) {}

    // The steps, in this order. A step that returns false has failed the base call; no further step may follow, and
    // Failure may give the reason. All may throw std::bad_alloc and whatever the library throws. End must be called in
    // every case.

    // Passes the sample to the library. `first` and `last` are raw scans, below 0 for the default.
    bool SetUp(const CSampleFile& sample, CDyeMatrix& matrix, std::int32_t first, std::int32_t last, bool annotate);
    // Runs the library's procedures, up to and including number `highest`.
    bool RunProcedures(std::int32_t highest);
    // Copies the processed curves into `trace`.
    bool TakeCurves(CProcessedTrace& trace);
    // Copies the called bases into `bases`, with the good region and the qualities in percent.
    bool TakeBases(CCalledBases& bases);
    // Copies the separation matrix that was used; empty if the library reports none.
    void TakeMatrix(std::optional<Matrix4>& matrix);
    // Copies the library's other measurements into `analysis`; fields that it does not report stay as they are.
    void TakeMeasurements(CAnalysisInfo& analysis);

    // Releases the copy of the raw trace and calls the library's CleanUp. Nothing that the library returned may be used
    // afterwards.
    void End();

    // Why the base call failed; nothing if there is no text for it.
    const std::optional<std::string>& Failure() const { return failure; }
    // Sets the reason; returns false, for the step to return.
    bool Fail(const std::string& text);

  private:
    bool SetRange(std::int32_t first, std::int32_t last, double rate);
    void TakeSignalToNoise(CAnalysisInfo& analysis);
    void TakeSpacing(CAnalysisInfo& analysis);
    void TakeSeparation(CAnalysisInfo& analysis);

    const CEntryPoints& library;
    const CCapTrace& raw;
    std::optional<CRawArrays> arrays;  // from SetUp to End, since the library may keep pointers into them
    std::int32_t procedures = 1;
    bool annotation = false;
    std::int32_t end = 0;  // of the processed range, raw scans
    std::optional<std::string> failure;
};

// The highest number of bases that a sample file can hold, and so the limit for other counts of a library too.
inline constexpr std::int32_t maxBases = 32767;
