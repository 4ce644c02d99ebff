// SPDX-License-Identifier: MIT
#include "lanetools/samples/ListEntries.h"

#include <algorithm>
#include <system_error>

#include "lanetools/ExitCode.h"

namespace lanetools {

namespace fs = std::filesystem;

CEntries ListEntries(const fs::path& folder, Unread& unread) {
    CEntries entries;
    std::error_code error;
    for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error)) {
        std::error_code reason;
        (at->is_directory(reason) ? entries.folders : entries.files).push_back(at->path());
        // A link to a missing file will be reported if it is a sample.
        if (reason && reason != std::errc::no_such_file_or_directory && reason != std::errc::not_a_directory)
            unread.push_back({at->path().string(), reason.message()});
    }
    if (error == std::errc::not_a_directory) throw CRefused(folder.string() + ": " + error.message());
    if (error) unread.push_back({folder.string(), entries.reason = error.message()});
    std::sort(entries.files.begin(), entries.files.end());
    std::sort(entries.folders.begin(), entries.folders.end());
    return entries;
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
