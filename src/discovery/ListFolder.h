// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "platform/Error.h"

// Appends the paths that match `pattern` (wildcards in its last component) to `out`, in the order of
// platform::FindFiles. With `foldersOnly` only folders that `out` does not contain yet; otherwise all entries,
// including folders and repeats. False when nothing matched. A folder that cannot be listed counts as empty, and
// `error`, if not null, gets the reason.
bool ListFolder(const std::string& pattern, std::vector<std::string>& out, bool foldersOnly,
                platform::Error* error = nullptr);
