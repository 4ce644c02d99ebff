#include "config/FileExists.h"

#include "platform/Files.h"

std::int32_t FileExists(const std::string& path) {
    return platform::FindFiles(path).empty() ? 0 : 1;
}
