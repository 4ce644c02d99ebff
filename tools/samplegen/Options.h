// SPDX-License-Identifier: MIT
// What the user asks for.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "samplegen/Troubles.h"

namespace samplegen {

struct Options {
    std::string folder;
    std::string plate = "synth";  // plate name, and start of the file names
    int wells = 96;               // 1 to 384
    int bases = 600;              // per read, 20 to 2000
    std::uint64_t seed = 1;
    std::string form = "rsd";     // extension of the files
    std::string version = "1.2";  // of the file format, 1.1 or 1.2
    bool tree = true;             // whether the samples have a property tree
    int failedWells = 0;
    int saturatedWells = 0;
    std::string baseOrder = "TGCA";  // bases of channels 1 to 4
    int scanRate = 1;                // index 0 to 4, see plugins/ScanRate.h
    Troubles troubles;               // of every well
    bool hard = false;               // each well draws its own troubles instead
};

// Reads the command line. The result is empty if the program is to end at once; `exitCode` is then 0 after --help, or 1
// after a message on standard error.
std::optional<Options> ParseOptions(int argc, const char* const* argv, int& exitCode);

}  // namespace samplegen
