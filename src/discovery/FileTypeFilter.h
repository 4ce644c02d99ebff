// SPDX-License-Identifier: MIT
// One type of sample file.
#pragma once

#include <string>

struct CFileTypeFilter {
    std::string pattern;  // a wildcard pattern such as "*.rsd"
};
