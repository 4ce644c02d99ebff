#pragma once

#include <string>
#include <vector>

#include "platform/Error.h"

// Adds the paths that match `pattern` (wildcards in its last component) to the end of `out`, in the order of the file
// search. With `foldersOnly` these are folders that `out` does not hold yet; otherwise all entries, folders and repeats
// included. False when nothing matched at all; a folder that cannot be listed counts as an empty one, and `error`, if
// it is wanted, gets the reason.
bool ListFolder(const std::string& pattern, std::vector<std::string>& out, bool foldersOnly,
                platform::Error* error = nullptr);
