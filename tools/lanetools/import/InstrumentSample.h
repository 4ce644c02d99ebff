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
    // Complete but for the plate's size. plateId is empty when the file names none, wellId when it names no well.
    CSampleInfo info;
    std::vector<ScanRecord> scans;
    std::string wellText;  // the well as the file has it
    std::string remark;    // what the user should know of it; usually empty
};

// `file` holds the bytes of a whole file, whatever they are. Throws CUnusable when it is no ABIF file or has no usable
// raw channels. Which tag goes where is in docs/import.md.
CInstrumentSample ReadInstrumentSample(std::span<const std::byte> file);

}  // namespace lanetools
