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

// Writes the sample file `path`, and creates its folder if the parent of that exists. The file appears
// whole, or the former one stays. False if a file with the same bytes exists: it is not touched, and it and its folder
// may be write-protected. Throws CNotStored.
bool StoreSample(const std::string& path, const CSampleInfo& info, std::span<const ScanRecord> scans);

}  // namespace lanetools
