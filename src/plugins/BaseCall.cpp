// SPDX-License-Identifier: MIT
// CSampleFile: one base call.
#include <new>

#include "config/RunSettings.h"
#include "plugins/Conversation.h"
#include "plugins/EntryPoints.h"
#include "run/Plate.h"
#include "samplestore/CapTrace.h"
#include "samplestore/SampleFile.h"

namespace {

// All steps of the conversation but End. True when the base call succeeded.
bool RunSteps(CConversation& conversation, CSampleFile& sample, CProcessedTrace& trace, CDyeMatrix& matrix,
              std::int32_t first, std::int32_t last, std::int32_t procedureIndex) {
    sample.rawTrace->trace->FillArrays();
    const bool annotate = sample.plate->Settings().annotationOn != 0;
    if (!conversation.SetUp(sample, matrix, first, last, annotate) || !conversation.RunProcedures(procedureIndex) ||
        !conversation.TakeCurves(trace) || !conversation.TakeBases(trace.calledBases))
        return false;
    conversation.TakeMatrix(trace.separationMatrix);
    conversation.TakeMeasurements(sample.info.analysis);
    return true;
}

// Removes what was copied before the failure, so that it does not look like a result.
void Clear(CProcessedTrace& trace) {
    trace.FreeArrays();
    trace.scanCount = 0;
    trace.traceStart = trace.traceEnd = 0;
}

}  // namespace

std::int32_t CSampleFile::BaseCall(const platform::Library& module, CDyeMatrix& matrix, std::int32_t first,
                                   std::int32_t last, std::int32_t procedureIndex) {
    CProcessedTrace* trace = processedTrace ? processedTrace->Processed() : nullptr;
    if (!trace || !rawTrace || !rawTrace->trace->HasChannels()) return 0;
    std::string& error = info.analysis.basecallError;
    const CEntryPoints library(module, fileName, first > 0);
    if (!library.Missing().empty()) {
        error = "The library lacks the entry point " + library.Missing();
        return 0;
    }
    CConversation conversation(library, *rawTrace->trace);
    bool isCalled = false;
    try {
        isCalled = RunSteps(conversation, *this, *trace, matrix, first, last, procedureIndex);
    } catch (const std::bad_alloc&) {
        conversation.End();
        throw;  // the caller skips the sample
    } catch (...) {
        conversation.Fail("The library broke the base call off with an exception");
    }
    conversation.End();
    if (!isCalled) {
        Clear(*trace);
        if (conversation.Failure()) error = *conversation.Failure();
        return 0;
    }
    // Clears the error of the raw file or of an earlier library: this base call succeeded.
    error.clear();
    if (plate->Settings().allowUserGoodRegion != 0) FindGoodRegion();
    return 1;
}
