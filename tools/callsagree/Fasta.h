// FASTA files and the records in them.
#pragma once

#include <string>
#include <vector>

namespace callsagree {

struct FastaRecord {
    std::string stem;   // name of the file that the title names, without folder and extension
    std::string bases;  // in upper case
};

// All records of the file; throws std::runtime_error when it cannot be read or does not start with a title. Line ends
// may be LF or CR LF. A title's path ends at the first tab or, if it has none, at the first blank.
std::vector<FastaRecord> ReadFasta(const std::string& path);

// The records of all of the files and of the FASTA files in all of the folders. The search of a folder passes over the
// file `except`, which must exist. Throws likewise, and for a folder without any.
std::vector<FastaRecord> ReadCalls(const std::vector<std::string>& paths, const std::string& except);

}  // namespace callsagree
