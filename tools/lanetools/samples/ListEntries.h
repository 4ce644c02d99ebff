// SPDX-License-Identifier: MIT
// Folders as the command line gives them, and their entries in a fixed order.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace lanetools {

// All entries but "." and "..", sorted by name. Throws CRefused, with the folder's name and the reason, if it cannot
// be listed.
std::vector<std::filesystem::path> ListEntries(const std::filesystem::path& folder);
// False if it cannot be listed.
bool IsListable(const std::filesystem::path& folder);

// The full path with all links resolved and no separator at its end. Throws CRefused if it does not exist.
std::filesystem::path Resolve(const std::filesystem::path& path);
// The last component of the full path as it was given, links not resolved: "p" for "plates/p/" and for "." in it.
std::string LastName(const std::filesystem::path& given);

}  // namespace lanetools
