// SPDX-License-Identifier: MIT
#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <memory>

#include "platform/Ascii.h"
#include "platform/Drives.h"
#include "platform/Files.h"

namespace platform {

namespace {

bool MatchesWildcard(std::string_view name, std::string_view pattern) {
    if (pattern == "*.*") return true;
    std::size_t n = 0, p = 0;
    // Where to resume after a mismatch: the latest "*", and the position in the name up to which it takes characters.
    std::size_t star = std::string_view::npos, resume = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            resume = n;
        } else if (p < pattern.size() && (pattern[p] == '?' || UpperAscii(pattern[p]) == UpperAscii(name[n]))) {
            ++p;
            ++n;
        } else if (star != std::string_view::npos) {
            p = star + 1;
            n = ++resume;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', p) == std::string_view::npos;
}

bool IsBeforeInListing(const FoundEntry& a, const FoundEntry& b) {
    const auto [inA, inB] = std::mismatch(a.name.begin(), a.name.end(), b.name.begin(), b.name.end(),
                                          [](char x, char y) { return UpperAscii(x) == UpperAscii(y); });
    if (inA == a.name.end() && inB == b.name.end()) return a.name < b.name;
    if (inA == a.name.end() || inB == b.name.end()) return inA == a.name.end();
    return static_cast<unsigned char>(UpperAscii(*inA)) < static_cast<unsigned char>(UpperAscii(*inB));
}

bool IsDotName(std::string_view name) {
    return name == "." || name == "..";
}

// Adds the entry with this name unless it does not exist or is a broken link.
void AddNamed(const std::string& folder, const std::string& name, std::vector<FoundEntry>& entries) {
    struct stat status {};
    if (::stat((folder + name).c_str(), &status) == 0) entries.push_back({name, S_ISDIR(status.st_mode)});
}

// True for a folder or a link to one. False for a broken link, which is listed as a file; opening it will report the
// error.
bool IsFolder(const std::string& path, unsigned char type) {
    if (type != DT_LNK && type != DT_UNKNOWN) return type == DT_DIR;
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

}  // namespace

Error FindFiles(const std::string& pattern, std::vector<FoundEntry>& entries) {
    entries.clear();
    const auto native = NativePath(pattern);
    if (!native) return ENOENT;
    const std::size_t nameStart = native->rfind('/') + 1;  // 0 when there is no separator
    const std::string folder = native->substr(0, nameStart);
    const std::string last = native->substr(nameStart);
    if (last.empty() || IsDotName(last)) return success;
    if (last.find_first_of("*?") == std::string::npos) {
        AddNamed(folder, last, entries);
        return success;
    }

    const std::unique_ptr<DIR, int (*)(DIR*)> listing(::opendir(folder.empty() ? "." : folder.c_str()), ::closedir);
    if (listing == nullptr) return errno;
    errno = 0;
    while (const dirent* entry = ::readdir(listing.get())) {
        const std::string name = entry->d_name;
        if (!IsDotName(name) && MatchesWildcard(name, last))
            entries.push_back({name, IsFolder(folder + name, entry->d_type)});
        errno = 0;
    }
    const Error error = errno;
    std::sort(entries.begin(), entries.end(), IsBeforeInListing);
    return error;
}

}  // namespace platform
