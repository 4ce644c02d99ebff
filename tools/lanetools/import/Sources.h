// SPDX-License-Identifier: MIT
// The files that the command line names.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace lanetools {

struct CSource {
    std::string path;                   // as on the command line; in a folder, the folder's path and the name
    std::string stem;                   // its name without extension and .gz
    std::string folder;                 // name of its folder
    std::string refusal;                // why it is not even tried; usually empty
    std::optional<std::size_t> sameAs;  // the source before it that is the same file
};

// In the order of `arguments` and within a folder by name (by byte value). A folder means the .ab1 and .abi files
// directly in it, in any letter case and maybe with .gz after it; if `isRecursive`, those in the folders below it too,
// each of which is entered once. A folder without such files is a source that is refused, and so is a folder below that
// cannot be listed. Throws CRefused for an argument that does not exist or cannot be listed, and if nothing at all was
// found.
std::vector<CSource> FindSources(const std::vector<std::string>& arguments, bool isRecursive);

// The bytes of a source, unpacked if it is compressed with gzip. Throws CUnusable if it cannot be read, is not a
// regular file, or is too large for a run.
std::string ReadSource(const std::string& path);

}  // namespace lanetools
