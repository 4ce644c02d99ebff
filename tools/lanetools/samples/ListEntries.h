// The entries of a folder, in a fixed order.
#pragma once

#include <filesystem>
#include <vector>

namespace lanetools {

// All entries but "." and "..", sorted by name. Throws CRefused, with the folder's name and the reason, when it cannot
// be listed.
std::vector<std::filesystem::path> ListEntries(const std::filesystem::path& folder);
bool IsListable(const std::filesystem::path& folder);

}  // namespace lanetools
