// SPDX-License-Identifier: MIT
#include "lanetools/text/StandardOutput.h"

#include <cstdio>
#include <stdexcept>

namespace lanetools {

void WriteStandardOutput(std::string_view text) {
    const bool isWritten = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
    if (std::fflush(stdout) != 0 || !isWritten) throw std::runtime_error("standard output cannot be written");
}

}  // namespace lanetools
