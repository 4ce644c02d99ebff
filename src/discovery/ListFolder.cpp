// SPDX-License-Identifier: MIT
#include "discovery/ListFolder.h"

#include <algorithm>
#include <utility>

#include "discovery/SplitPath.h"
#include "platform/Files.h"

bool ListFolder(const std::string& pattern, std::vector<std::string>& out, bool foldersOnly, platform::Error* error) {
    std::vector<platform::FoundEntry> found;
    const platform::Error listed = platform::FindFiles(pattern, found);
    if (error) *error = listed;
    std::string base = pattern;
    SplitPath(base);
    if (!base.empty()) base += '\\';
    for (const platform::FoundEntry& entry : found) {
        if (foldersOnly && !entry.isDirectory) continue;
        std::string path = base + entry.name;
        if (foldersOnly && std::find(out.begin(), out.end(), path) != out.end()) continue;
        out.push_back(std::move(path));
    }
    return !found.empty();
}
