// SPDX-License-Identifier: MIT
// Reads FASTA files.
#pragma once

#include <string>
#include <vector>

namespace callsagree {

struct FastaRecord {
    std::string stem;   // the name in the title without folder and extension: "s1" of ">/out/s1.esd\t600"
    std::string bases;  // in upper case
};

// All records of the file. Line ends may be LF or CR LF. The name in a title ends at the first tab or, if there is
// none, at the first blank. Throws std::runtime_error if the file cannot be read or does not begin with a title.
std::vector<FastaRecord> ReadFasta(const std::string& path);

// The records of all files in `paths`, and of all .seq and .fasta files in the folders among them and below. The file
// `except`, which must exist, is skipped in the folders. Throws like ReadFasta, and for a folder without such a file.
std::vector<FastaRecord> ReadCalls(const std::vector<std::string>& paths, const std::string& except);

}  // namespace callsagree
