// SPDX-License-Identifier: MIT
#include "lanetools/samples/ListEntries.h"

#include <algorithm>
#include <system_error>

#include "lanetools/ExitCode.h"

namespace lanetools {

namespace fs = std::filesystem;

std::vector<fs::path> ListEntries(const fs::path& folder) {
    std::error_code error;
    std::vector<fs::path> entries;
    for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error))
        entries.push_back(at->path());
    if (error) throw CRefused(folder.string() + ": " + error.message());
    std::sort(entries.begin(), entries.end());
    return entries;
}

bool IsListable(const fs::path& folder) {
    std::error_code error;
    const fs::directory_iterator entries(folder, error);
    return !error;
}

fs::path Resolve(const fs::path& path) {
    std::error_code error;
    fs::path resolved = fs::canonical(path, error);
    if (error) throw CRefused(path.string() + ": " + error.message());
    return resolved;
}

std::string LastName(const fs::path& given) {
    std::error_code error;
    const fs::path full = fs::absolute(given, error).lexically_normal();
    return full.has_filename() ? full.filename().string() : full.parent_path().filename().string();
}

}  // namespace lanetools
