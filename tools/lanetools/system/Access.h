// What this user may do with files and folders, asked for before anything is done.
#pragma once

#include <string>

namespace lanetools {

// Why no file can be made in the folder at `path`, as the system puts it; empty when one can.
std::string WhyNoFilesIn(const std::string& path);
// Why the file at `path` cannot be written; empty when it can, or when there is none.
std::string WhyNotWritable(const std::string& path);
// True when there is a program at `path` that this user may start.
bool IsProgram(const std::string& path);

}  // namespace lanetools
