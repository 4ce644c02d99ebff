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
    // Where to go on when the rest does not match: the latest "*", and the name from which it stops taking characters.
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
    const std::string upperA = UpperAscii(a.name), upperB = UpperAscii(b.name);
    return upperA != upperB ? upperA < upperB : a.name < b.name;
}

bool IsDotName(std::string_view name) {
    return name == "." || name == "..";
}

// Adds what the name leads to, if there is anything.
void AddNamed(const std::string& folder, const std::string& name, std::vector<FoundEntry>& entries) {
    struct stat status {};
    if (::stat((folder + name).c_str(), &status) == 0) entries.push_back({name, S_ISDIR(status.st_mode)});
}

// Adds an entry of a listing. A link to a file that is gone is one too: whoever opens it will tell of the loss.
void AddListed(const std::string& folder, const std::string& name, std::vector<FoundEntry>& entries) {
    const std::string path = folder + name;
    struct stat status {};
    if (::stat(path.c_str(), &status) == 0 || ::lstat(path.c_str(), &status) == 0)
        entries.push_back({name, S_ISDIR(status.st_mode)});
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
        if (!IsDotName(name) && MatchesWildcard(name, last)) AddListed(folder, name, entries);
        errno = 0;
    }
    const Error error = errno;
    std::sort(entries.begin(), entries.end(), IsBeforeInListing);
    return error;
}

}  // namespace platform
