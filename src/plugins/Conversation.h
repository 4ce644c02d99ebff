// One conversation with a base-caller library about one sample. docs/library-interface.md tells it from the library's
// side.
//
// What a library returns stays its property and is data, not trust: no number of it sizes, indexes or ends a loop
// before it has been tested. How long the library's own arrays are cannot be measured, so a count or a range that no
// run can have is refused before the first element is read.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "plugins/EntryPoints.h"
#include "plugins/RawArrays.h"
#include "samplestore/CapTrace.h"

class CDyeMatrix;
class CSampleFile;

class CConversation {
  public:
    // `entryPoints` has all that is needed. Both outlive the conversation.
    CConversation(const CEntryPoints& entryPoints, const CCapTrace& rawTrace) : library(entryPoints), raw(rawTrace) {}

    // The steps in their order; the next one may be taken only when this one gave true. With false the base call has
    // failed, and Failure may say why. All may throw what a library throws, and std::bad_alloc; End must come in every
    // case.

    // Hands the sample over. `first` and `last` are raw scans, below 0 for the default.
    bool SetUp(const CSampleFile& sample, CDyeMatrix& matrix, std::int32_t first, std::int32_t last, bool annotate);
    // Runs the library's procedures up to and with number `highest`.
    bool RunProcedures(std::int32_t highest);
    // Takes the processed curves over.
    bool TakeCurves(CProcessedTrace& trace);
    // Takes the called bases over, with their good region and quality in percent.
    bool TakeBases(CCalledBases& bases);
    // Takes the matrix that was used over; none when the library tells none.
    void TakeMatrix(std::optional<Matrix4>& matrix);
    // Takes over what else the library has measured; what it does not report stays as it is.
    void TakeMeasurements(CAnalysisInfo& analysis);

    // Lets go of the copy of the raw trace and has the library clean up; nothing that it gave may be used afterwards.
    void End();

    // Why the base call failed; nothing when there are no words for it.
    const std::optional<std::string>& Failure() const { return failure; }
    bool Fail(const std::string& text);  // false, for the step to return

  private:
    bool SetRange(std::int32_t first, std::int32_t last, double rate);
    void TakeSignalToNoise(CAnalysisInfo& analysis);
    void TakeSpacing(CAnalysisInfo& analysis);
    void TakeSeparation(CAnalysisInfo& analysis);

    const CEntryPoints& library;
    const CCapTrace& raw;
    std::optional<CRawArrays> arrays;  // from SetUp to End: the library may point into them
    std::int32_t procedures = 1;
    bool annotation = false;
    std::int32_t end = 0;  // of the processed range, raw scans
    std::optional<std::string> failure;
};

// The most bases that a sample file can count, and so the most of anything that is counted along the bases.
inline constexpr std::int32_t mostBases = 32767;
