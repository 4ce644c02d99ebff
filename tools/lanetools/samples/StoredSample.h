// A stored sample (.esd called, .fsd failed) as the subcommands see it: read once, and verified on the way.
#pragma once

#include <string>
#include <vector>

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
    // The description. Of a called sample sequence, qualityScores and peakPositions have at least basesCalled elements
    // each. Empty or in part for a damaged one.
    CSampleInfo info;
};

// Reads the file at `path`. Whatever is wrong with it, also that it cannot be opened, gives a damaged sample.
// A file is damaged when its container checksum is wrong, its scan count is not that of its scan block, or an array is
// shorter than the bases.
CStoredSample ReadStoredSample(const std::string& path);

// One folder of stored samples, as the program makes it for each plate and library.
struct COutputFolder {
    std::string path;                // without separators at its end
    std::string name;                // its last component, such as "plate1_LC1_QX1"
    std::vector<std::string> files;  // paths of its stored samples, one per stem (.esd before .fsd), sorted by stem
};

// The folders with stored samples among `roots` and the folders directly in them, each once, sorted by path. Throws
// CRefused for a root that is no folder or cannot be listed, or when there is no stored sample at all.
std::vector<COutputFolder> FindOutputs(const std::vector<std::string>& roots);

}  // namespace lanetools
