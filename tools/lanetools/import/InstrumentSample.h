// SPDX-License-Identifier: MIT
// An instrument's ABIF file as a raw sample.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "samplestore/SampleInfo.h"
#include "samplestore/ScanRecord.h"

namespace lanetools {

struct CInstrumentSample {
    // Complete except for the plate's size. plateId is empty if the file names no plate, wellId if it names no well.
    CSampleInfo info;
    std::vector<ScanRecord> scans;
    std::string wellText;  // the well as it is in the file
    std::string remark;    // what the user should know about it; usually empty
};

// `file` holds the bytes of a whole file, which may be anything. Throws CUnusable if it is not an ABIF file or has no
// usable raw channels. Which tag goes where is in docs/import.md.
CInstrumentSample ReadInstrumentSample(std::span<const std::byte> file);

}  // namespace lanetools
