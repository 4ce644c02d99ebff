// SPDX-License-Identifier: MIT
// The called bases as every output of a sequence shows them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "samplestore/CapTrace.h"

class CSampleFile;

// Indices of the bases to show, ascending and all valid: those of the whole trace, or of its good region, without those
// that the base caller marks as hidden.
std::vector<std::int32_t> ExportBases(const CProcessedTrace& trace, bool goodRegionOnly);

// The letters of these bases, 50 per line. Every full line ends with `lineEnd`, and so does the rest, even when it is
// empty.
std::string SequenceLines(const CSampleFile& sample, const CProcessedTrace& trace,
                          const std::vector<std::int32_t>& bases, std::string_view lineEnd);
