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

    decltype(&::GetNumOfProcedures) getNumOfProcedures;
    decltype(&::SetIfAnnotate) setIfAnnotate;
    decltype(&::SetNumSamples) setNumSamples;
    decltype(&::SetRawData) setRawData;
    decltype(&::GetProgramName) getProgramName;
    decltype(&::SetSignalRange) setSignalRange;
    decltype(&::SetApproxiamtePeakWidth) setPeakWidth;
    decltype(&::SetSpecSepMatrix) setMatrix;
    decltype(&::ExecuteProcedure) executeProcedure;
    decltype(&::ReportProblem) reportProblem;
    decltype(&::PeekProcessedTrace) peekProcessedTrace;
    decltype(&::ReportSequence) reportSequence;
    decltype(&::ReportSpecSeparatnMatrixUsed) reportMatrixUsed;
    decltype(&::ReportSignalRangeForRawData) reportSignalRange;
    decltype(&::ReportSignalToNoise) reportSignalToNoise;
    decltype(&::ReportFWHMSpacing) reportSpacing;
    decltype(&::ReportNumCurrFix) reportCurrentFixes;
    decltype(&::ReportSpecSepDepth) reportSeparationDepth;
    decltype(&::ReportSpecSepQual) reportSeparationQuality;
    decltype(&::ReportTrueStartStopPoints) reportTrueRange;
    decltype(&::CleanUp) cleanUp;

  private:
    std::string missing;
};
