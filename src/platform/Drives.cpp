#include "platform/Drives.h"

#include <algorithm>

#include "platform/Ascii.h"
#include "platform/RegistryStore.h"

namespace platform {

namespace {

// Host folder of a drive. An entry's name is the letter, with or without its colon.
std::optional<std::string> DriveRoot(char letter) {
    if (letter == 'Z') return "/";
    std::string name(1, letter);
    auto root = ReadRegistryText("Drives", name);
    if (!root) root = ReadRegistryText("Drives", name + ':');
    if (root && root->empty()) return std::nullopt;
    return root;
}

}  // namespace

std::optional<std::string> NativePath(std::string_view path) {
    // A host path ends at its first NUL; what came after would silently be another file.
    if (path.find('\0') != std::string_view::npos) return std::nullopt;
    std::string native(path);
    std::replace(native.begin(), native.end(), '\\', '/');

    const char letter = native.size() >= 2 && native[1] == ':' ? UpperAscii(native[0]) : '\0';
    if (letter < 'A' || letter > 'Z') return native;
    auto root = DriveRoot(letter);
    if (!root) return std::nullopt;
    if (native.size() == 2) return root;
    if (root->back() != '/') *root += '/';
    return *root + native.substr(native[2] == '/' ? 3 : 2);
}

}  // namespace platform
