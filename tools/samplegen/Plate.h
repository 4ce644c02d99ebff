// A whole plate of samples and what goes with it.
#pragma once

#include <string>
#include <vector>

#include "samplegen/Options.h"

namespace samplegen {

struct PlateReport {
    std::vector<std::string> failed;     // names of wells
    std::vector<std::string> saturated;  // likewise
};

// Writes the samples, truth.fasta and dyeMethod1.ini; throws std::runtime_error with the file and the system's reason.
PlateReport WritePlate(const Options& options);

}  // namespace samplegen
