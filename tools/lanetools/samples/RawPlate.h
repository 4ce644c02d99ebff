// SPDX-License-Identifier: MIT
// Raw samples, whose results the subcommands look for.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "lanetools/samples/Unread.h"
#include "samplestore/SampleInfo.h"
#include "samplestore/ScanRecord.h"

namespace lanetools {

// A folder of raw samples.
struct CRawPlate {
    std::string path;                // with all links resolved
    std::string name;                // its last component, which the program names output folders after
    std::string givenName;           // that of the path as it was given, which may be a link
    std::vector<std::string> files;  // paths of its .esd and .rsd files, in any letter case, sorted
    bool isWanted = true;            // even without an output folder; at first true if it was given by its own path
};

// The plates of `folders`: a folder is a plate or, if it has no samples directly in it, holds plates. Each once, sorted
// by path. Adds to `unread` folders and entries that cannot be listed or looked at. Throws CRefused for a path that
// does not exist, is not a folder or has no samples.
std::vector<CRawPlate> FindRawPlates(const std::vector<std::string>& folders, Unread& unread);

struct CRawSample {
    std::string path;
    std::string stem;    // the name that its result has, without extension
    std::string reason;  // why it cannot be called; empty for a raw sample that could be read
    CSampleInfo info;    // as the program reads it: an old file is named by NameByFile; empty if it cannot be read
    Unread unread;       // the file, if the system does not give it
};

CRawSample ReadRawSample(const std::string& path, const std::string& plateName);

// True if a result with the description `stored` may come from the raw sample `raw`: the run starts are equal, and
// the sample's names too where the raw sample has one.
bool IsResultOf(const CSampleInfo& stored, const CSampleInfo& raw);

// The scans of a sample file; empty if it has none, or if it cannot be read, which is then in `unread`.
std::vector<ScanRecord> ReadScans(const std::string& path, Unread& unread);
// The highest value of their four channels; empty without scans.
std::optional<std::int64_t> RawPeak(const std::vector<ScanRecord>& scans);

}  // namespace lanetools
