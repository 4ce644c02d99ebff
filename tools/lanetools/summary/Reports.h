// SPDX-License-Identifier: MIT
// The rows of a summary as files. Same rows, same bytes.
#pragma once

#include <string>
#include <vector>

#include "lanetools/samples/SampleRow.h"

namespace lanetools {

// A header line and a line per row, tabs between; control characters become blanks.
std::string TsvReport(const std::vector<CSampleRow>& rows);

// {schema, version, plates: [{plate, called, failed, missing, damaged}], samples: [{a key per column}]}; what is absent
// is null.
std::string JsonReport(const std::vector<CSampleRow>& rows);

struct CReportFile {
    std::string name, text;
};

// Files of custom content for MultiQC, always the same three: a table of all rows, bars of the states of each plate,
// and a map of the wells of each plate and caller.
std::vector<CReportFile> MultiqcReport(const std::vector<CSampleRow>& rows);

}  // namespace lanetools
