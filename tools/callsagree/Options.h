// What the user asks for.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace callsagree {

struct Options {
    std::string truth;               // a FASTA file
    std::vector<std::string> calls;  // FASTA files, and folders to search for them
    double identityAtLeast = 0;      // percent
    double coverageAtLeast = 0;      // percent
};

// Reads the command line. Nothing when the program is to end at once, with `exitCode`: 0 after --help, 1 after a
// message on standard error.
std::optional<Options> ParseOptions(int argc, const char* const* argv, int& exitCode);

}  // namespace callsagree
