// SPDX-License-Identifier: MIT
// Text files that a user names, which may be pipes.
#pragma once

#include <cstddef>
#include <string>

namespace lanetools {

// The bytes of the file or pipe at `path`. Throws CRefused if it cannot be read or has more than `limit` bytes, and
// CInterrupted if Ctrl-C ends the wait for a pipe.
std::string ReadText(const std::string& path, std::size_t limit);

}  // namespace lanetools
