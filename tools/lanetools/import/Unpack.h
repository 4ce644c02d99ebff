// SPDX-License-Identifier: MIT
// Sources that are compressed with gzip.
#pragma once

#include <cstddef>
#include <string>

namespace lanetools {

// True if the bytes begin as a gzip file does.
bool IsPacked(const std::string& bytes);

// The contents of a gzip file of one or more members; bytes after them are ignored, as gzip does. Throws CUnusable if
// it is damaged, ends too early, or unpacks to more than `limit` bytes; never keeps more than these in memory.
std::string Unpack(const std::string& packed, std::size_t limit);

}  // namespace lanetools
