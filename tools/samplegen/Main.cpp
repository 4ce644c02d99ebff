// SPDX-License-Identifier: MIT
// samplegen: makes a plate of synthetic raw samples whose bases are known. See docs/tools.md.
#include <cstdio>
#include <exception>
#include <optional>
#include <string>
#include <vector>

#include "samplegen/Options.h"
#include "samplegen/Plate.h"
#include "samplegen/Troubles.h"

namespace {

void PrintWells(const char* kind, const std::vector<std::string>& wells) {
    if (wells.empty()) return;
    std::printf("%s:", kind);
    for (const std::string& well : wells)
        std::printf(" %s", well.c_str());
    std::printf("\n");
}

}  // namespace

int main(int argc, char** argv) {
    int exitCode = 0;
    const auto options = samplegen::ParseOptions(argc, argv, exitCode);
    if (!options) return exitCode;
    try {
        const samplegen::PlateReport report = samplegen::WritePlate(*options);
        const bool mayEnd = options->hard || options->troubles.endAt > 0;
        std::printf("%d samples of %s%d bases in %s\n", options->wells, mayEnd ? "up to " : "",
                    options->troubles.endAt > 0 ? options->troubles.endAt : options->bases, options->folder.c_str());
        PrintWells("failed", report.failed);
        PrintWells("saturated", report.saturated);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "samplegen: %s\n", error.what());
        return 1;
    }
}
