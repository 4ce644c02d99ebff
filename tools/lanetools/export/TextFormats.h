// SPDX-License-Identifier: MIT
// How a read looks in the formats that are plain text.
#pragma once

#include <string>

#include "lanetools/export/Read.h"

namespace lanetools {

std::string FastqText(const CRead& read);
std::string FastaText(const CRead& read);
std::string QualText(const CRead& read);
std::string PhdText(const CRead& read);

}  // namespace lanetools
