// SPDX-License-Identifier: MIT
// Files that a subcommand writes where its user says.
#pragma once

#include <string>

namespace lanetools {

// The path of the file to write for `path`: a link is followed, so that it stays one. Throws CRefused for a folder, a
// device or a pipe, and for the name of a sample file, which is never replaced.
std::string ResolveTarget(const std::string& path);

}  // namespace lanetools
