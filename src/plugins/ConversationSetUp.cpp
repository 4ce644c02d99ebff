// SPDX-License-Identifier: MIT
// CConversation: passes the sample to the library, runs its procedures, and ends the conversation.
#include <algorithm>
#include <string_view>

#include "platform/Ascii.h"
#include "plugins/Conversation.h"
#include "plugins/DyeMatrix.h"
#include "plugins/ScanRate.h"
#include "samplestore/SampleFile.h"

namespace {

constexpr double secondsToSignal = 800.0;  // of a run, before the first fragments arrive
constexpr std::string_view programNeedingRange = "QXBaseCaller";
constexpr std::int32_t chosenByLibrary = -1;

}  // namespace

bool CConversation::SetUp(const CSampleFile& sample, CDyeMatrix& matrix, std::int32_t first, std::int32_t last,
                          bool annotate) {
    if (library.getNumOfProcedures) procedures = library.getNumOfProcedures();
    annotation = annotate && library.setIfAnnotate;
    if (annotation) library.setIfAnnotate(1);
    library.setNumSamples(1);
    const double rate = ScanRateHz(sample.info.scanRate);
    arrays.emplace(raw);
    library.setRawData(0, arrays->Pointers(), channelCount, arrays->Scans(), static_cast<float>(rate),
                       sample.baseOrder.c_str());
    if (!SetRange(first, last, rate)) return false;
    library.setPeakWidth(0, chosenByLibrary);
    library.setMatrix(0, matrix.RowPointers());
    return true;
}

// Sets the signal range for a library that needs it, or when a range was asked for. Otherwise the library finds its
// own.
bool CConversation::SetRange(std::int32_t first, std::int32_t last, double rate) {
    const char* program = library.getProgramName();
    if (first <= 0 && !(program && platform::EqualIgnoringCase(program, programNeedingRange))) return true;
    if (!library.setSignalRange) return Fail("The library lacks the entry point SetSignalRange");
    const std::int32_t lastScan = arrays->Scans() - 1;
    const std::int32_t signalEnd = last < 0 ? lastScan : std::min(last, lastScan);
    // The default may be beyond the end of a short run.
    const std::int32_t signalStart =
        first < 0 ? static_cast<std::int32_t>(rate * secondsToSignal) : std::min(first, signalEnd);
    library.setSignalRange(0, signalStart, signalEnd);
    return true;
}

bool CConversation::RunProcedures(std::int32_t highest) {
    for (std::int32_t i = 0; i < procedures && i <= highest; ++i) {
        if (library.executeProcedure(0, i, 0) != 0) continue;
        std::int32_t number = 0;
        double value = 0;
        const char* problem = library.reportProblem ? library.reportProblem(0, &number, &value) : nullptr;
        return Fail(problem ? problem : "Not available");
    }
    return true;
}

bool CConversation::Fail(const std::string& text) {
    failure = text;
    return false;
}

void CConversation::End() {
    arrays.reset();
    try {
        library.cleanUp();
    } catch (...) {  // nothing depends on how the clean-up ends
    }
}
