// The functions that a base-caller library exports, looked up once for each conversation.
#pragma once

#include <lanewright/basecaller.h>
#include <string>

#include "platform/Library.h"

// Null for what the library lacks; Missing tells whether that matters.
struct CEntryPoints {
    // `withRange` tells whether the signal range will be set whatever the library's name is.
    CEntryPoints(const platform::Library& library, bool withRange);

    // The first entry point that the conversation needs and the library lacks; empty when it has them all.
    const std::string& Missing() const { return missing; }

    decltype(&::GetNumOfProcedures) getNumOfProcedures = nullptr;
    decltype(&::SetIfAnnotate) setIfAnnotate = nullptr;
    decltype(&::SetNumSamples) setNumSamples = nullptr;
    decltype(&::SetRawData) setRawData = nullptr;
    decltype(&::GetProgramName) getProgramName = nullptr;
    decltype(&::SetSignalRange) setSignalRange = nullptr;
    decltype(&::SetApproxiamtePeakWidth) setPeakWidth = nullptr;
    decltype(&::SetSpecSepMatrix) setMatrix = nullptr;
    decltype(&::ExecuteProcedure) executeProcedure = nullptr;
    decltype(&::ReportProblem) reportProblem = nullptr;
    decltype(&::PeekProcessedTrace) peekProcessedTrace = nullptr;
    decltype(&::ReportSequence) reportSequence = nullptr;
    decltype(&::ReportSpecSeparatnMatrixUsed) reportMatrixUsed = nullptr;
    decltype(&::ReportSignalRangeForRawData) reportSignalRange = nullptr;
    decltype(&::ReportSignalToNoise) reportSignalToNoise = nullptr;
    decltype(&::ReportFWHMSpacing) reportSpacing = nullptr;
    decltype(&::ReportNumCurrFix) reportCurrentFixes = nullptr;
    decltype(&::ReportSpecSepDepth) reportSeparationDepth = nullptr;
    decltype(&::ReportSpecSepQual) reportSeparationQuality = nullptr;
    decltype(&::ReportTrueStartStopPoints) reportTrueRange = nullptr;
    decltype(&::CleanUp) cleanUp = nullptr;

  private:
    std::string missing;
};
