// SPDX-License-Identifier: MIT
#include "config/FileExists.h"

#include <tuple>
#include <vector>

#include "platform/Files.h"

std::int32_t FileExists(const std::string& path) {
    std::vector<platform::FoundEntry> found;
    std::ignore = platform::FindFiles(path, found);
    return found.empty() ? 0 : 1;
}
