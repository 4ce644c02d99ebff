// SPDX-License-Identifier: MIT
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
        ListContents(path, !foldersOnly);
        return;
    }

    std::string root = path;
    SplitPath(root);
    const bool isWorkingFolder = root.empty() && path.find_first_of("\\/") == std::string::npos;
    List(root, path, subfolders, true);
    std::set<platform::FileIdentity> entered;
    if (const auto identity = platform::IdentityOf(isWorkingFolder ? "." : root + '/')) entered.insert(*identity);
    // The list grows while the loop runs, so the tree is scanned level by level. A link to a folder that has been
    // entered would give the same files again, and a link to the root would give folders that the pattern excludes.
    for (std::size_t i = 0; i < subfolders.size(); ++i) {
        const std::string next = subfolders[i];
        const auto identity = platform::IdentityOf(next);
        if (!identity || entered.insert(*identity).second) ListContents(next, true);
    }
}

void CFolderScan::ListContents(const std::string& path, bool withFiles) {
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
