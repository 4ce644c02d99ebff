#include "discovery/FolderScan.h"

#include "discovery/ListFolder.h"
#include "discovery/SplitPath.h"
#include "platform/Files.h"

namespace {

// True when the way to `folder`, from the folder `root` on, already went through the same folder: a link leads back.
bool LeadsBack(const std::string& folder, const std::string& root) {
    for (std::string above = folder; above.size() > root.size();) {
        SplitPath(above);
        if (platform::IsSameFile(above.empty() ? "." : above, folder)) return true;
    }
    return false;
}

}  // namespace

CFolderScan::CFolderScan(const std::string& path, const std::vector<CFileTypeFilter>& types, bool foldersOnly) {
    Scan(path, types, foldersOnly);
}

void CFolderScan::Scan(const std::string& path, const std::vector<CFileTypeFilter>& types, bool foldersOnly) {
    files.clear();
    subfolders.clear();
    fileTypes = types;
    if (path.find('*') == std::string::npos) {
        LookInto(path, !foldersOnly);
        return;
    }

    ListFolder(path, subfolders, true);
    std::string root = path;
    SplitPath(root);
    // The list grows while it is walked, and so the tree is taken level by level.
    for (std::size_t i = 0; i < subfolders.size(); ++i) {
        const std::string next = subfolders[i];
        if (!LeadsBack(next, root)) LookInto(next, true);
    }
}

void CFolderScan::LookInto(const std::string& path, bool withFiles) {
    folder = path;
    ListFolder(path + "\\*", subfolders, true);
    if (!withFiles) return;
    for (const CFileTypeFilter& type : fileTypes)
        ListFolder(path + '\\' + type.pattern, files, false);
}
