// SPDX-License-Identifier: MIT
// Writes an imported sample.
#pragma once

#include <span>
#include <stdexcept>
#include <string>

#include "samplestore/SampleInfo.h"
#include "samplestore/ScanRecord.h"

namespace lanetools {

// A sample could not be written; the text is the system's.
class CNotStored : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

enum class Stored {
    New,        // there was no file
    Updated,    // the file had another description
    Unchanged,  // the file has the same bytes and was not touched
    Taken,      // nothing was written: a file has come to be at the path
};

// Writes the sample file `path`, and creates its folder if the parent of that exists. The file appears whole, or the
// former one stays; its bytes, but not yet its name, are then on the disk. A file is replaced only if `isOwn`, that is
// if it is known to hold this sample. If it has the same bytes, it and its folder may be write-protected. Throws
// CNotStored.
Stored StoreSample(const std::string& path, const CSampleInfo& info, std::span<const ScanRecord> scans, bool isOwn);

// True if the file at `path` has the bytes that StoreSample would write. Throws CNotStored if that cannot be found out.
bool IsStored(const std::string& path, const CSampleInfo& info, std::span<const ScanRecord> scans);

}  // namespace lanetools
