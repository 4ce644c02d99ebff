// SPDX-License-Identifier: MIT
// Where exported files go: next to the sample's file in the output tree, in one subfolder per format.
#include <algorithm>
#include <cstddef>
#include <string>

#include "config/RunSettings.h"
#include "discovery/SplitPath.h"
#include "export/Formats.h"
#include "platform/Files.h"
#include "run/Plate.h"
#include "run/RunDriver.h"

std::string CSampleFile::ExportPath(const std::string& sourcePath, const std::string& extension) {
    const auto* const format =
        std::find_if(formats.begin(), formats.end(), [&](const CFormat& row) { return row.extension == extension; });
    if (format == formats.end()) return {};
    std::string leaf = WithoutExtension(sourcePath);
    const std::size_t separator = leaf.find_last_of("/\\");
    std::string target;
    if (separator != std::string::npos) {
        target = leaf.substr(0, separator);
        leaf.erase(0, separator + 1);
    } else {
        // A file given without a folder.
        target = platform::CurrentFolder().value_or(".");
    }

    const CRunSettings& settings = plate->Settings();
    if (!format->subfolder.empty() && settings.exportToSubfolders != 0) {
        target.append("/").append(format->subfolder);
        if (plate->driver->MakeFolder(target) == 0) return {};
    }
    target.append("/").append(leaf);
    if (!format->mayGoWithout || settings.noExtensions == 0) target.append(".").append(extension);
    return target;
}
