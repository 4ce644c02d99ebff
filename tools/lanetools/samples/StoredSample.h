// SPDX-License-Identifier: MIT
// A stored sample (.esd called, .fsd failed) as the subcommands see it: read once, and verified on the way.
#pragma once

#include <string>
#include <vector>

#include "lanetools/samples/Unread.h"
#include "samplestore/SampleInfo.h"

namespace lanetools {

enum class SampleState {
    Called,
    Failed,   // the base call failed; `reason` is the stored error
    Missing,  // a raw sample without a result
    Damaged,  // a file that cannot be trusted; `reason` says what is wrong with it
};

// "called", "failed", "missing" or "damaged".
const char* StateName(SampleState state);

struct CStoredSample {
    std::string path;  // of the file
    std::string stem;  // its name without folder and extension
    SampleState state = SampleState::Damaged;
    std::string reason;  // bytes as stored; empty for a called sample
    // The description. Of a called sample all arrays of the bases have at least basesCalled elements each. Empty or in
    // part for a damaged one, and not to be trusted.
    CSampleInfo info;
    Unread unread;  // of its files those that the system does not give, which may be good all the same
};

// A file at `path` that could not be read.
CStoredSample UnreadSample(const std::string& path, const std::string& reason);

// Reads the file at `path`. Any fault, also that it cannot be opened, gives a damaged sample. A file is damaged if its
// scans, tree and trailer do not fill it, its container checksum is wrong, its scan count is not that of its scan
// block, it holds a raw sample, or an array of a called sample is shorter than the bases.
CStoredSample ReadStoredFile(const std::string& path);

// The same, but if an .esd is damaged (and could be read) and a good .fsd of the same stem exists, returns that: the
// call was repeated and failed. Use this for the `files` of an output folder.
CStoredSample ReadStoredSample(const std::string& path);

// One folder of stored samples, as the program creates it for each plate and library.
struct COutputFolder {
    std::string path;                // with all links resolved
    std::string name;                // its last component as it was given, such as "plate1_LC1_QX1"
    std::vector<std::string> files;  // paths of its stored samples, one per stem (.esd before .fsd), sorted by stem
    std::string reason = {};         // why it may hold more; empty if it could be listed to its end
};

// What the program adds to the name of a plate for its output folder: "_", the library's code and this.
inline constexpr const char* outputSuffix = "_QX1";

// The folders with stored samples, or with a name that ends in outputSuffix, among `roots` and the folders directly in
// them, each once, sorted by path. Adds to `unread` folders and entries that cannot be listed or looked at. Throws
// CRefused for a root that does not exist or is not a folder. May be empty.
std::vector<COutputFolder> ListOutputs(const std::vector<std::string>& roots, Unread& unread);

// Those of them that hold a stored sample. Throws CRefused also if there are none.
std::vector<COutputFolder> FindOutputs(const std::vector<std::string>& roots, Unread& unread);

}  // namespace lanetools
