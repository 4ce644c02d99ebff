// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace lanetools {

// Writes the result of a subcommand to standard output. Throws std::runtime_error if not all of it could be written.
void WriteStandardOutput(std::string_view text);

}  // namespace lanetools
