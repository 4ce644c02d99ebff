// SPDX-License-Identifier: MIT
#include "run/InputNames.h"

#include <cerrno>

#include "discovery/FolderScan.h"
#include "platform/Console.h"
#include "run/Plate.h"

namespace {

// The folder part of "/a.rsd" is empty and stands for the root.
std::string DisplayPath(const std::string& folder) {
    return folder.empty() ? "/" : folder;
}

}  // namespace

void CInputNames::AddPlate(const CPlate& plate) {
    const CFolderScan& scan = plate.scan;
    for (const auto& [folder, error] : scan.unlisted)
        platform::Warn({"the plate ", DisplayPath(folder), " cannot be listed: ", error.Text()});
    if (scan.files.empty() && scan.unlisted.empty())
        platform::Warn({"the plate ", DisplayPath(scan.folder), " contains no samples"});
    AddFolder(plate, true);
}

void CInputNames::AddFile(const std::string& path, const CPlate& plate) {
    const platform::Error error = platform::Examine(path);
    if (error == ENOENT)
        platform::Warn({"the file ", path, " does not exist"});
    else if (error)
        platform::Warn({"the file ", path, " cannot be examined: ", error.Text()});
    else if (!files.insert(path).second)
        platform::Warn({"the file ", path, " is given twice"});
    AddFolder(plate, false);
}

void CInputNames::AddFolder(const CPlate& plate, bool isWhole) {
    const std::string folder = DisplayPath(plate.scan.folder);
    const auto identity = platform::IdentityOf(folder);
    if (!identity) return;
    auto& known = folders[plate.name];
    const bool isFirst = known.empty();
    const auto [entry, isNew] = known.try_emplace(*identity, isWhole);
    if (isNew && plate.name.empty())
        platform::Warn({"the plate ", folder, " has no name, because its path ends with a separator"});
    if (isNew && !isFirst)
        platform::Warn({"the plate ", folder, " shares its output folder with another plate named ", plate.name});
    if (!isNew && isWhole && entry->second) platform::Warn({"the plate ", folder, " is given twice"});
    entry->second = entry->second || isWhole;
}
