// Making sample files that did not exist before, for tools and tests. The program itself only ever updates copies.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "platform/Error.h"
#include "samplestore/SampleInfo.h"
#include "samplestore/ScanRecord.h"

// Both write a sample file at `path`, replacing what is there, with a good checksum. info.scanCount and info.version go
// in as they are: a file that is to be read again needs scans.size() and 1.1 or more. plateColumns and plateRows go in
// too. Errors are those of CRsdFile.

// Without a property tree: only what the trailer holds can be read back.
platform::Error WriteBareSample(const std::string& path, const CSampleInfo& info, std::span<const ScanRecord> scans);
// With a property tree of all keys that the program stores for `info`.
platform::Error WriteSample(const std::string& path, const CSampleInfo& info, std::span<const ScanRecord> scans);
