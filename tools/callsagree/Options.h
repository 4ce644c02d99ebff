// SPDX-License-Identifier: MIT
// What the user asks for.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace callsagree {

struct Options {
    std::string truth;               // a FASTA file
    std::vector<std::string> calls;  // FASTA files, and folders to search for them
    double identityAtLeast = 0;      // of all records, in percent
    double coverageAtLeast = 0;      // of all records, in percent
};

// Reads the command line. The result is empty if the program is to end at once; `exitCode` is then 0 after --help, or 1
// after a message on standard error.
std::optional<Options> ParseOptions(int argc, const char* const* argv, int& exitCode);

}  // namespace callsagree
