// Where exported files lie: beside the sample's file in the output tree, in a subfolder for each format.
//
//   extension   subfolder   dropped when the user wants files without extensions
//   ---------   ---------   ----------------------------------------------------
//   seq         FASTA       no
//   txt         Text        no
//   abd         ABD         yes
//   scf         SCF         yes
//   fsd         none        no
#include <algorithm>
#include <cerrno>
#include <string_view>

#include "export/SampleTexts.h"
#include "platform/Files.h"

namespace {

constexpr std::size_t extensionLength = 4;  // with its dot

std::string_view SubfolderOf(std::string_view extension) {
    if (extension == "seq") return "FASTA";
    if (extension == "txt") return "Text";
    if (extension == "abd") return "ABD";
    if (extension == "scf") return "SCF";
    return {};
}

bool MakeSubfolder(CRunDriver* driver, const std::string& path) {
    if (driver) return driver->MakeFolder(path) != 0;
    return platform::MakeDirectory(path) != ENOENT;
}

}  // namespace

std::string CSampleFile::ExportPath(const std::string& sourcePath, const std::string& extension) {
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
    const std::string_view subfolder = SubfolderOf(extension);
    if (!subfolder.empty() && (!settings || settings->exportToSubfolders != 0)) {
        target.append("/").append(subfolder);
        if (!MakeSubfolder(plate->driver, target)) return {};
    }
    target.append("/").append(leaf);
    const bool mayGoWithout = extension == "abd" || extension == "scf";
    if (!(mayGoWithout && settings && settings->noExtensions != 0)) target.append(".").append(extension);
    return target;
}
