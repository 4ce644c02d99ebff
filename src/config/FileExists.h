#pragma once

#include <cstdint>
#include <string>

// Non-zero if a file search for `path` finds an entry, be it a file or a folder. Wildcards in the last component match.
std::int32_t FileExists(const std::string& path);
