// SPDX-License-Identifier: MIT
// Writes a whole plate: the samples and the files that belong to them.
#pragma once

#include <string>
#include <vector>

#include "samplegen/Options.h"

namespace samplegen {

struct PlateReport {
    std::vector<std::string> failed;  // names of these wells
    std::vector<std::string> saturated;
};

// Writes the samples, truth.fasta, dyeMethod1.ini and, for a hard plate, troubles.txt into options.folder. Throws
// std::runtime_error, with the name of the file and the system's reason, if one cannot be written.
PlateReport WritePlate(const Options& options);

}  // namespace samplegen
