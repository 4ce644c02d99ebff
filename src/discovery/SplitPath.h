#pragma once

#include <string>

// Leaves the folder part in `path`, without the separator at its end, and gives the last component. "\" and "/" both
// separate, and the very last character counts: "a/b/" gives "" and leaves "a/b". Without a separator the whole text is
// the component and `path` becomes empty.
std::string SplitPath(std::string& path);
// The last component alone.
std::string LastComponent(std::string path);
// The path less its last four characters, which are an extension of three letters in all names that the program meets.
std::string WithoutExtension(const std::string& path);
