// SPDX-License-Identifier: MIT
// Folders as the command line gives them, and their entries in a fixed order.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "lanetools/samples/Unread.h"

namespace lanetools {

struct CEntries {
    std::vector<std::filesystem::path> files, folders;  // paths, sorted; links to folders are folders
    std::string reason;                                 // why some or all are lacking; empty if none is
};

// All entries but "." and "..". An entry that cannot be looked at is in `files`, and in `unread`, as the folder itself
// is if it cannot be listed to its end. Throws CRefused if it is not a folder.
CEntries ListEntries(const std::filesystem::path& folder, Unread& unread);

// The full path with all links resolved and no separator at its end. Throws CRefused if it does not exist.
std::filesystem::path Resolve(const std::filesystem::path& path);
// The last component of the full path as it was given, links not resolved: "p" for "plates/p/" and for "." in it.
std::string LastName(const std::filesystem::path& given);

}  // namespace lanetools
