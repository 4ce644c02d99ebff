// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "samplestore/RsdFile.h"

namespace lanetools {

// Opens a sample file for reading. Returns the reason if it cannot be opened, or is larger than any run (64 MiB, some
// three million scans): a file may claim any size, and its scans are read into memory. Empty on success.
std::string OpenSample(CRsdFile& file, const std::string& path);

}  // namespace lanetools
