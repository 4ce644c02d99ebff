// SPDX-License-Identifier: MIT
#include "platform/Drives.h"

#include <sys/stat.h>

#include <algorithm>
#include <map>

#include "platform/Ascii.h"
#include "platform/RegistryStore.h"

namespace platform {

namespace {

// Host folder of a drive. The entry in the store is named by the letter, with or without a colon.
std::optional<std::string> DriveRoot(char letter) {
    std::string name(1, letter);
    auto root = ReadRegistryText("Drives", name);
    if (!root) root = ReadRegistryText("Drives", name + ':');
    if (root && root->empty()) return std::nullopt;
    return root;
}

// Identifies a version of the registry store, to notice when it changes.
struct StoreState {
    std::string path;
    struct stat status {};

    StoreState() : path(RegistryStorePath().value_or("")) {
        if (::stat(path.c_str(), &status) != 0) status = {};
    }
    bool operator==(const StoreState& other) const {
        return path == other.path && status.st_dev == other.status.st_dev && status.st_ino == other.status.st_ino &&
               status.st_size == other.status.st_size && status.st_mtim.tv_sec == other.status.st_mtim.tv_sec &&
               status.st_mtim.tv_nsec == other.status.st_mtim.tv_nsec;
    }
};

// The same, looked up once per version of the store, because every path of a run goes through here.
std::optional<std::string> KnownDriveRoot(char letter) {
    if (letter == 'Z') return "/";
    static StoreState known;
    static std::map<char, std::optional<std::string>> roots;
    if (const StoreState now; !(now == known)) {
        roots.clear();
        known = now;
    }
    const auto [entry, isNew] = roots.try_emplace(letter);
    if (isNew) entry->second = DriveRoot(letter);
    return entry->second;
}

}  // namespace

std::optional<std::string> NativePath(std::string_view path) {
    // A host path ends at its first NUL, so the rest would be ignored and the path would name another file.
    if (path.find('\0') != std::string_view::npos) return std::nullopt;
    std::string native(path);
    std::replace(native.begin(), native.end(), '\\', '/');

    const char letter = native.size() >= 2 && native[1] == ':' ? UpperAscii(native[0]) : '\0';
    if (letter < 'A' || letter > 'Z') return native;
    auto root = KnownDriveRoot(letter);
    if (!root) return std::nullopt;
    if (native.size() == 2) return root;
    if (root->back() != '/') *root += '/';
    return *root + native.substr(native[2] == '/' ? 3 : 2);
}

}  // namespace platform
