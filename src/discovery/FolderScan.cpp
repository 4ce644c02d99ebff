#include "discovery/FolderScan.h"

#include <set>

#include "discovery/ListFolder.h"
#include "discovery/SplitPath.h"
#include "platform/Files.h"

CFolderScan::CFolderScan(const std::string& path, const std::vector<CFileTypeFilter>& types, bool foldersOnly) {
    Scan(path, types, foldersOnly);
}

CFolderScan::CFolderScan(const std::string& path) : folder(path) {}

void CFolderScan::Scan(const std::string& path, const std::vector<CFileTypeFilter>& types, bool foldersOnly) {
    files.clear();
    subfolders.clear();
    unlisted.clear();
    fileTypes = types;
    if (path.find('*') == std::string::npos) {
        LookInto(path, !foldersOnly);
        return;
    }

    std::string root = path;
    SplitPath(root);
    const bool isWorkingFolder = root.empty() && path.find_first_of("\\/") == std::string::npos;
    List(root, path, subfolders, true);
    std::set<platform::FileIdentity> entered;
    if (const auto identity = platform::IdentityOf(isWorkingFolder ? "." : root + '/')) entered.insert(*identity);
    // The list grows while it is walked, and so the tree is taken level by level. A second way to a folder, by a link,
    // would only lead to the same files once more, and one back to the root to what the pattern leaves out.
    for (std::size_t i = 0; i < subfolders.size(); ++i) {
        const std::string next = subfolders[i];
        const auto identity = platform::IdentityOf(next);
        if (!identity || entered.insert(*identity).second) LookInto(next, true);
    }
}

void CFolderScan::LookInto(const std::string& path, bool withFiles) {
    folder = path;
    List(path, path + "\\*", subfolders, true);
    if (!withFiles) return;
    for (const CFileTypeFilter& type : fileTypes)
        List(path, path + '\\' + type.pattern, files, false);
}

void CFolderScan::List(const std::string& path, const std::string& pattern, std::vector<std::string>& out,
                       bool foldersOnly) {
    platform::Error error;
    ListFolder(pattern, out, foldersOnly, &error);
    if (error && (unlisted.empty() || unlisted.back().folder != path)) unlisted.push_back({path, error});
}
