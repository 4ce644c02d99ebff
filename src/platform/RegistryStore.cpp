// SPDX-License-Identifier: MIT
// Layout of the store, line by line:
//   [sub-key]             starts a section; a sub-key may have several
//   value name = text     an entry of the section; the last one with a name counts
//   ; or # ...            a comment, skipped like an empty line

#include "platform/RegistryStore.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstdlib>
#include <vector>

#include "platform/Ascii.h"
#include "platform/Console.h"
#include "platform/Descriptor.h"
#include "platform/Error.h"
#include "platform/Files.h"

namespace platform {

namespace {

bool IsFile(const std::string& hostPath) {
    struct stat status {};
    return ::stat(hostPath.c_str(), &status) == 0 && !S_ISDIR(status.st_mode);
}

std::optional<std::string> FindText(std::string_view store, std::string_view subKey, std::string_view name) {
    std::optional<std::string> found;
    bool inSection = false;
    while (!store.empty()) {
        const std::string_view line = Trim(TakeLine(store));
        if (line.empty() || line.front() == ';' || line.front() == '#') continue;
        if (line.front() == '[' && line.back() == ']') {
            inSection = EqualIgnoringCase(Trim(line.substr(1, line.size() - 2)), Trim(subKey));
            continue;
        }
        const std::size_t equals = line.find('=');
        if (!inSection || equals == std::string_view::npos) continue;
        if (EqualIgnoringCase(Trim(line.substr(0, equals)), Trim(name))) found = Trim(line.substr(equals + 1));
    }
    return found;
}

// Full path of the folder of a file, ending in "/". Nothing if the working folder is needed and unknown.
std::optional<std::string> FolderOf(const std::string& hostPath) {
    const std::string folder = hostPath.substr(0, hostPath.rfind('/') + 1);
    if (folder.starts_with('/')) return folder;
    const auto working = CurrentFolder();
    if (!working) return std::nullopt;
    return *working + (working->ends_with('/') ? "" : "/") + folder;
}

std::optional<std::string> Absolute(const std::string& text, const std::string& storePath) {
    const bool fromHere = text == "." || text.starts_with("./");
    if (!fromHere && !text.starts_with("../")) return text;
    auto folder = FolderOf(storePath);
    if (!folder) return std::nullopt;
    if (fromHere) {
        const std::size_t start = text.find_first_not_of('/', 1);
        const std::string below = start == std::string::npos ? "" : text.substr(start);
        if (below.empty() && *folder != "/") folder->pop_back();
        return *folder + below;
    }
    return *folder + text;
}

}  // namespace

std::optional<std::string> RegistryStorePath() {
    if (const char* given = std::getenv("QUILLION_REGISTRY")) return given;

    std::vector<std::string> candidates;
    const char* configuration = std::getenv("XDG_CONFIG_HOME");
    const char* home = std::getenv("HOME");
    if (configuration != nullptr && *configuration != '\0')
        candidates.push_back(std::string(configuration) + "/quillion/registry.ini");
    else if (home != nullptr && *home != '\0')
        candidates.push_back(std::string(home) + "/.config/quillion/registry.ini");
    candidates.push_back("/etc/quillion/registry.ini");
    candidates.push_back(PathNextToProgram("registry.ini"));
    for (const std::string& candidate : candidates) {
        if (IsFile(candidate)) return candidate;
    }
    return std::nullopt;
}

std::optional<std::string> ReadRegistryText(std::string_view subKey, std::string_view name) {
    const auto path = RegistryStorePath();
    if (!path) return std::nullopt;
    std::string store;
    // The store is read by its host path: a program path could name a drive, and drives are looked up in the store.
    if (const Error error = host::ReadFile(*path, store, maxSettingsSize)) {
        if (!(error == ENOENT)) Warn(*path + " cannot be read: " + error.Text());
        return std::nullopt;
    }
    const auto text = FindText(store, subKey, name);
    return text ? Absolute(*text, *path) : std::nullopt;
}

}  // namespace platform
