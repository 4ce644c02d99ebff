// SPDX-License-Identifier: MIT
// A sample sheet is read or refused with a reason. Each of its names is found under its plate and well.
#include <cstddef>
#include <string>
#include <string_view>

#include "Fuzz.h"
#include "lanetools/ExitCode.h"
#include "lanetools/export/SampleSheet.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string path = fuzz::Folder().Write("sheet", fuzz::Text(data, size));
    try {
        lanetools::CSampleSheet sheet(path);
        for (const std::string& row : sheet.Unused()) {
            // "PLATE WELL (line N)", where both may have blanks
            const std::string key = row.substr(0, row.rfind(" ("));
            bool isFound = false;
            for (std::size_t at = key.find(' '); at != std::string::npos && !isFound; at = key.find(' ', at + 1))
                isFound = !sheet.Name(key.substr(0, at), key.substr(at + 1)).empty();
            fuzz::Demand(isFound);
        }
    } catch (const lanetools::CRefused& refused) {
        fuzz::Demand(std::string_view(refused.what()).starts_with(path));
    }
    return 0;
}
