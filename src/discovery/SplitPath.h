// SPDX-License-Identifier: MIT
#pragma once

#include <string>

// Removes the last component and the separator before it from `path`, and returns the component. "\" and "/" are both
// separators, also at the very end: "a/b/" returns "" and leaves "a/b". Without a separator the whole text is the
// component and `path` becomes empty.
std::string SplitPath(std::string& path);
// The last component alone.
std::string LastComponent(std::string path);
// The path without its last four characters, which are a dot and a three-letter extension in all file names that the
// program handles.
std::string WithoutExtension(const std::string& path);
