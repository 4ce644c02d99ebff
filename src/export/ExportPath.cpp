// Where exported files lie: beside the sample's file in the output tree, in a subfolder for each format.
#include <algorithm>
#include <cerrno>

#include "export/Formats.h"
#include "platform/Files.h"
#include "run/RunSettings.h"

namespace {

constexpr std::size_t extensionLength = 4;  // with its dot

bool MakeSubfolder(CRunDriver* driver, const std::string& path) {
    if (driver) return driver->MakeFolder(path) != 0;
    return platform::MakeDirectory(path) != ENOENT;
}

}  // namespace

std::string CSampleFile::ExportPath(const std::string& sourcePath, const std::string& extension) {
    const auto* const format =
        std::find_if(formats.begin(), formats.end(), [&](const CFormat& row) { return row.extension == extension; });
    if (format == formats.end()) return {};
    std::string leaf = sourcePath.substr(0, sourcePath.size() - std::min(sourcePath.size(), extensionLength));
    const std::size_t separator = leaf.find_last_of("/\\");
    std::string target;
    if (separator != std::string::npos) {
        target = leaf.substr(0, separator);
        leaf.erase(0, separator + 1);
    } else {
        // A file given without a folder.
        target = platform::CurrentFolder().value_or(".");
    }

    const CBaseCallerSet* settings = RunSettings(*this);
    if (!format->subfolder.empty() && (!settings || settings->exportToSubfolders != 0)) {
        target.append("/").append(format->subfolder);
        if (!MakeSubfolder(plate->driver, target)) return {};
    }
    target.append("/").append(leaf);
    if (!(format->mayGoWithout && settings && settings->noExtensions != 0)) target.append(".").append(extension);
    return target;
}
