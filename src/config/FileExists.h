// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

// Non-zero if there is a file or folder at `path`. The last component may have wildcards; one match is then enough.
std::int32_t FileExists(const std::string& path);
