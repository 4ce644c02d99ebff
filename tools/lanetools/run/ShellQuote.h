// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace lanetools {

// The words as one line that a POSIX shell splits into the same words.
std::string ShellQuoted(const std::vector<std::string>& words);

}  // namespace lanetools
