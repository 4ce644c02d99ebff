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

}  // namespace lanetools
