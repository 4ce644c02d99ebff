// SPDX-License-Identifier: MIT
// The functions that a base-caller library exports, looked up once for each conversation.
#pragma once

#include <lanewright/basecaller.h>
#include <string>

#include "platform/Library.h"
#include "plugins/EntryPoint.h"

// An entry point that the library lacks is empty; Missing reports whether it is needed.
struct CEntryPoints {
    // `withRange`: SetSignalRange will be called, so it is needed even if the library is not "QXBaseCaller". `library`
    // and `sample`, whose names are used in warnings, must outlive the entry points.
    CEntryPoints(const platform::Library& library, const std::string& sample, bool withRange);

    // Name of the first entry point that is needed and that the library lacks; empty if it has them all.
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
