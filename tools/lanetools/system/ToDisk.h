// SPDX-License-Identifier: MIT
// Files that are on the disk when they are reported as written, so that they are whole after a power cut too.
#pragma once

#include <string>
#include <system_error>

#include "platform/AtomicFile.h"

namespace lanetools {

// Commits `file`, which was opened for `path`, and waits until its contents and its name are on the disk. Throws
// std::runtime_error with `path` and the reason of the first error since it was opened.
void CommitToDisk(platform::AtomicFile& file, const std::string& path);

// Waits until the names of all files and folders in the folder `path` are on the disk. `file` is one of them, or below
// it. Throws as above.
void SyncNamesIn(const std::string& path, const std::string& file);

// Waits until everything written to the volume of the existing file `path` is on the disk. Throws as above.
void SyncVolumeOf(const std::string& path);

// Makes the last folder of `path` unless it exists, and waits until its name is on the disk. `error` is set if there is
// no folder then.
void MakeFolderOnDisk(const std::string& path, std::error_code& error);

}  // namespace lanetools
