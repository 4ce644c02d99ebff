// SPDX-License-Identifier: MIT
// What exists but could not be read or looked at. A command does the rest, names each of these and ends with
// ExitCode::Incomplete.
#pragma once

#include <compare>
#include <string>
#include <vector>

#include "platform/Error.h"

namespace lanetools {

// A folder, a sample or another entry of a folder. Bytes as they are, not UTF-8.
struct CUnread {
    std::string path, reason;  // the system's reason, or that it is too large

    auto operator<=>(const CUnread&) const = default;
};
using Unread = std::vector<CUnread>;

// True if CRsdFile::Reason describes what the system says, and not a fault in the contents of the file. For errors of
// operations on an open file.
bool IsOfSystem(platform::Error error);
// The reason when there is not enough memory for a sample.
std::string NoMemory();

// Sorted, each once.
Unread Sorted(Unread unread);
// Writes a line for each of them on standard error, each once.
void ShowUnread(const Unread& unread);

}  // namespace lanetools
