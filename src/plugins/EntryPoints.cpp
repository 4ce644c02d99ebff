// SPDX-License-Identifier: MIT
#include "plugins/EntryPoints.h"

namespace {

enum class Need { Always, Sometimes };  // Sometimes: the caller tests for it

}  // namespace

CEntryPoints::CEntryPoints(const platform::Library& library, const std::string& sample, bool withRange) {
    const auto bind = [&](auto& entry, const char* name, Need need) {
        entry = {library, name, sample};
        if (!entry && need == Need::Always && missing.empty()) missing = name;
    };
    bind(getNumOfProcedures, "GetNumOfProcedures", Need::Sometimes);
    bind(setIfAnnotate, "SetIfAnnotate", Need::Sometimes);
    bind(setNumSamples, "SetNumSamples", Need::Always);
    bind(setRawData, "SetRawData", Need::Always);
    bind(getProgramName, "GetProgramName", Need::Always);
    bind(setSignalRange, "SetSignalRange", withRange ? Need::Always : Need::Sometimes);
    bind(setPeakWidth, "SetApproxiamtePeakWidth", Need::Always);
    bind(setMatrix, "SetSpecSepMatrix", Need::Always);
    bind(executeProcedure, "ExecuteProcedure", Need::Always);
    bind(reportProblem, "ReportProblem", Need::Sometimes);
    bind(peekProcessedTrace, "PeekProcessedTrace", Need::Always);
    bind(reportSequence, "ReportSequence", Need::Always);
    bind(reportMatrixUsed, "ReportSpecSeparatnMatrixUsed", Need::Always);
    bind(reportSignalRange, "ReportSignalRangeForRawData", Need::Sometimes);
    bind(reportSignalToNoise, "ReportSignalToNoise", Need::Sometimes);
    bind(reportSpacing, "ReportFWHMSpacing", Need::Sometimes);
    bind(reportCurrentFixes, "ReportNumCurrFix", Need::Sometimes);
    bind(reportSeparationDepth, "ReportSpecSepDepth", Need::Sometimes);
    bind(reportSeparationQuality, "ReportSpecSepQual", Need::Sometimes);
    bind(reportTrueRange, "ReportTrueStartStopPoints", Need::Sometimes);
    bind(cleanUp, "CleanUp", Need::Always);
}
