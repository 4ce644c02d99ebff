// Puts an imported sample in its place.
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

// Writes the sample file `path`, whose folder is made when it is not there; its parent must be there. The file appears
// whole, or what was there stays. False when a file with the same bytes is there already: it is not touched, and it and
// its folder may be write-protected. Throws CNotStored.
bool StoreSample(const std::string& path, const CSampleInfo& info, std::span<const ScanRecord> scans);

}  // namespace lanetools
