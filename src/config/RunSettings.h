// SPDX-License-Identifier: MIT
// The settings of a run that apply to its samples, with their defaults. Flags are 0 or 1.
#pragma once

#include <cstdint>
#include <string>

struct CRunSettings {
    std::string baseOrder = "ACTGN0";  // for samples that do not give their own; letters of channels 1 to 4 first
    std::string fastaFile;             // of -FA and -FA_; empty for a file per sample
    std::int32_t skipFailedExports = 0;
    std::int32_t procedureIndex = 5;  // highest procedure number that may run
    std::int32_t goodRegionOnly = 0;
    std::int32_t noExtensions = 0;
    std::int32_t exportToSubfolders = 1;
    std::int32_t allowUserGoodRegion = 0;
    std::int32_t userQualityCutoff = 0;     // percent
    std::int32_t allowedJunkPercent = 100;  // percent
    std::int32_t qualityWindow = 20;        // bases; below 1 counts as 1
    std::int32_t annotationOn = 0;
    std::int32_t baseOrderForced = 0;  // use baseOrder for every sample
};
