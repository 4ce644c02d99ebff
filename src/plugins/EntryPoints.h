// The functions that a base-caller library exports, looked up once for each conversation.
#pragma once

#include <lanewright/basecaller.h>
#include <string>

#include "platform/Library.h"
#include "plugins/EntryPoint.h"

// Empty for what the library lacks; Missing tells whether that matters.
struct CEntryPoints {
    // `withRange` tells whether the signal range will be set whatever the library's name is.
    // Both names given, of the library and of the sample, go into warnings; both owners outlive the entry points.
    CEntryPoints(const platform::Library& library, const std::string& sample, bool withRange);

    // The first entry point that the conversation needs and the library lacks; empty when it has them all.
    const std::string& Missing() const { return missing; }

    CEntryPoint<decltype(&::GetNumOfProcedures)> getNumOfProcedures;
    CEntryPoint<decltype(&::SetIfAnnotate)> setIfAnnotate;
    CEntryPoint<decltype(&::SetNumSamples)> setNumSamples;
    CEntryPoint<decltype(&::SetRawData)> setRawData;
    CEntryPoint<decltype(&::GetProgramName)> getProgramName;
    CEntryPoint<decltype(&::SetSignalRange)> setSignalRange;
    CEntryPoint<decltype(&::SetApproxiamtePeakWidth)> setPeakWidth;
    CEntryPoint<decltype(&::SetSpecSepMatrix)> setMatrix;
    CEntryPoint<decltype(&::ExecuteProcedure)> executeProcedure;
    CEntryPoint<decltype(&::ReportProblem)> reportProblem;
    CEntryPoint<decltype(&::PeekProcessedTrace)> peekProcessedTrace;
    CEntryPoint<decltype(&::ReportSequence)> reportSequence;
    CEntryPoint<decltype(&::ReportSpecSeparatnMatrixUsed)> reportMatrixUsed;
    CEntryPoint<decltype(&::ReportSignalRangeForRawData)> reportSignalRange;
    CEntryPoint<decltype(&::ReportSignalToNoise)> reportSignalToNoise;
    CEntryPoint<decltype(&::ReportFWHMSpacing)> reportSpacing;
    CEntryPoint<decltype(&::ReportNumCurrFix)> reportCurrentFixes;
    CEntryPoint<decltype(&::ReportSpecSepDepth)> reportSeparationDepth;
    CEntryPoint<decltype(&::ReportSpecSepQual)> reportSeparationQuality;
    CEntryPoint<decltype(&::ReportTrueStartStopPoints)> reportTrueRange;
    CEntryPoint<decltype(&::CleanUp)> cleanUp;

  private:
    std::string missing;
};
