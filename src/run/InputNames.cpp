#include "run/InputNames.h"

#include "platform/Console.h"
#include "run/Plate.h"

namespace {

// As a path of its own: what precedes the first separator of a path is the root.
std::string Shown(const std::string& folder) {
    return folder.empty() ? "/" : folder;
}

}  // namespace

void CInputNames::AddPlate(const CPlate& plate) {
    const CFolderScan& scan = plate.scan;
    for (const auto& [folder, error] : scan.unlisted)
        platform::Warn({"the plate ", Shown(folder), " cannot be listed: ", error.Text()});
    if (scan.files.empty() && scan.unlisted.empty())
        platform::Warn({"the plate ", Shown(scan.folder), " holds no samples"});
    AddFolder(plate, true);
}

void CInputNames::AddFile(const std::string& path, const CPlate& plate) {
    if (!platform::IdentityOf(path))
        platform::Warn({"the file ", path, " does not exist"});
    else if (!files.insert(path).second)
        platform::Warn({"the file ", path, " is given twice"});
    AddFolder(plate, false);
}

void CInputNames::AddFolder(const CPlate& plate, bool isWhole) {
    const std::string folder = Shown(plate.scan.folder);
    const auto identity = platform::IdentityOf(folder);
    if (!identity) return;
    auto& known = folders[plate.name];
    const bool isFirst = known.empty();
    const auto [entry, isNew] = known.try_emplace(*identity, isWhole);
    if (isNew && plate.name.empty())
        platform::Warn({"the plate ", folder, " has no name: a separator at the end of a path leaves none"});
    if (isNew && !isFirst)
        platform::Warn({"the plate ", folder, " shares its output folder with another one of the name ", plate.name});
    if (!isNew && isWhole && entry->second) platform::Warn({"the plate ", folder, " is given twice"});
    entry->second = entry->second || isWhole;
}
