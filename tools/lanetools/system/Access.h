// SPDX-License-Identifier: MIT
// What this user may do with files and folders, to be checked before anything is done.
#pragma once

#include <string>

namespace lanetools {

// The system's reason why no file can be created in the folder at `path`; empty if one can.
std::string WhyNoFilesIn(const std::string& path);
// The reason why the file at `path` cannot be written; empty if it can, or if it does not exist.
std::string WhyNotWritable(const std::string& path);
// True if `path` is a program that this user may start.
bool IsProgram(const std::string& path);

}  // namespace lanetools
