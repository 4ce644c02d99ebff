// SPDX-License-Identifier: MIT
// Creates new sample files, for tools and tests. The program itself only updates copies of existing ones.
#pragma once

#include <span>
#include <string>

#include "platform/Error.h"
#include "samplestore/SampleInfo.h"
#include "samplestore/ScanRecord.h"

// Both write a sample file at `path` with a valid checksum, replacing any file there. info.scanCount, info.version,
// plateColumns and plateRows are written unchanged; to be readable a file needs a scanCount of scans.size() and a
// version from 1.1 to 1000. Errors are those of CRsdFile.

// Without a property tree: only the fields of the trailer can be read back.
platform::Error WriteBareSample(const std::string& path, const CSampleInfo& info, std::span<const ScanRecord> scans);
// With a property tree of all keys that the program stores for `info`.
platform::Error WriteSample(const std::string& path, const CSampleInfo& info, std::span<const ScanRecord> scans);
