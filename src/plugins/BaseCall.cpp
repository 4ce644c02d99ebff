// CSampleFile: one base call.
#include <new>

#include "config/RunSettings.h"
#include "plugins/Conversation.h"
#include "run/Plate.h"

namespace {

// The conversation but for its end; true when the base call succeeded.
bool Talk(CConversation& conversation, CSampleFile& sample, CProcessedTrace& trace, CDyeMatrix& matrix,
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

// What was taken over before the failure must not look like a result.
void Empty(CProcessedTrace& trace) {
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
        isCalled = Talk(conversation, *this, *trace, matrix, first, last, procedureIndex);
    } catch (const std::bad_alloc&) {
        conversation.End();
        throw;  // costs the sample
    } catch (...) {
        conversation.Fail("The library broke the base call off with an exception");
    }
    conversation.End();
    if (!isCalled) {
        Empty(*trace);
        if (conversation.Failure()) error = *conversation.Failure();
        return 0;
    }
    // An error of an earlier library on this sample would hide what this one found.
    error.clear();
    if (plate->Settings().allowUserGoodRegion != 0) FindGoodRegion();
    return 1;
}
