// SPDX-License-Identifier: MIT
// What the command line of `lanetools export` asks for.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "lanetools/export/Adapter.h"
#include "lanetools/export/ReadFile.h"
#include "lanetools/export/Trimming.h"

namespace lanetools {

// As the switches have them.
struct CExportOptions {
    std::vector<std::string> outputs;
    std::string folder, format, per = "sample", trim = "none";
    std::optional<std::string> adapter, name, sheet, files;
    double adapterMismatch = 0.1;
    std::optional<double> mixed;
    unsigned cap = 93, minLength = 0;
    bool gzip = false, mask = false;
};

// How a called sample becomes a read.
struct CReadRules {
    Trim trim;
    std::optional<CAdapter> adapter;
    std::optional<double> mixed;  // IUPAC letters where a second letter has this ratio; see MixedPlaces
    bool mask;                    // lower case instead of cutting
    unsigned cap;                 // the highest Phred value
    std::size_t minLength;        // of what is neither cut nor masked
};

// Both throw CRefused, which names the switch, for values that do not fit.
CReadRules ParseRules(const CExportOptions& options);
ReadFormat ParseFormat(const CExportOptions& options);

}  // namespace lanetools
