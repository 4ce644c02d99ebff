// The called bases as every output of sequence shows them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "samplestore/CapTrace.h"

class CSampleFile;

// Indices of the bases to show, in order: those of the whole trace, or of its good region, without the ones that the
// base caller marks as not to be shown.
std::vector<std::int32_t> ExportBases(const CProcessedTrace& trace, bool goodRegionOnly);

// The letters of these bases, 50 a line. Every full line has `lineEnd` at its end, and so has the rest, even when it is
// empty.
std::string SequenceLines(const CSampleFile& sample, const CProcessedTrace& trace,
                          const std::vector<std::int32_t>& bases, std::string_view lineEnd);
