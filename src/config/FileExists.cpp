#include "config/FileExists.h"

#include "platform/Files.h"

std::int32_t FileExists(const std::string& path) {
    std::vector<platform::FoundEntry> found;
    return platform::FindFiles(path, found) || found.empty() ? 0 : 1;
}
