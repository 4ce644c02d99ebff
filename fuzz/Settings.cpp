// SPDX-License-Identifier: MIT
// The text files with the settings of a run: settings file, registry file and dye matrix.
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Fuzz.h"
#include "config/IniSection.h"
#include "platform/RegistryStore.h"
#include "plugins/DyeMatrix.h"
#include "samplestore/SampleInfo.h"
#include "support/Environment.h"
#include "support/TempFolder.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string file = fuzz::Folder().Write("settings.ini", fuzz::Text(data, size));
    for (const char* section : {"Base Callers", "Default", "General"})
        for (const std::string& line : ReadIniSection(section, file)) {
            fuzz::Demand(!line.empty() && line.size() < iniSectionSize);
            if (const auto entry = SplitIniLine(line)) {
                IsIniTrue(entry->value);
                IniNumber(entry->value);
            }
        }

    const testsupport::Environment store("QUILLION_REGISTRY", file);
    platform::ReadRegistryText("Quillion\\Base Calling", "Path");
    platform::ReadRegistryText("Drives", "D");

    CDyeMatrix matrix;
    matrix.Parse(std::string(fuzz::Text(data, size)));
    for (const auto& row : matrix.Values())
        for (const float value : row)
            fuzz::Demand(std::isfinite(value));
    return 0;
}
