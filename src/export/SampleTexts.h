// SPDX-License-Identifier: MIT
// Descriptions of a sample that the trace files share.
#pragma once

#include <string>

#include "run/Plate.h"
#include "samplestore/CapTrace.h"
#include "samplestore/SampleFile.h"
#include "samplestore/SampleInfo.h"

// "Quillion # " and the machine's id, "N/A" for an empty one.
inline std::string MachineText(const CSampleInfo& info) {
    return "Quillion # " + (info.machineId.empty() ? std::string("N/A") : info.machineId);
}

// The sample's name, or its well when it has none.
inline const std::string& SampleLabel(const CSampleInfo& info) {
    return info.sampleName.empty() ? info.wellId : info.sampleName;
}

// Display name of the library that called the bases; empty if there is none.
std::string CallerName(const CProcessedTrace& trace);

// Where the processed file of a sample without a processed trace would be. The plate's output folder must be set.
inline std::string FailedSourcePath(const CSampleFile& sample) {
    return sample.plate->outputFolder + "\\" + sample.fileName;
}
