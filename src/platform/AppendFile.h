// SPDX-License-Identifier: MIT
// A file to which whole records are appended, also by several processes at the same time.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/Descriptor.h"
#include "platform/Error.h"
#include "platform/Files.h"

namespace platform {

class AppendFile {
  public:
    // Opens the file, or creates it, and locks it. Waits up to 5 s for another process that has it locked (EBUSY).
    // EISDIR for a folder; EBUSY if a file is open already. A link is followed.
    Error Open(const std::string& path);
    // Identifies the open file.
    const FileIdentity& Identity() const { return identity; }
    // Appends `record` in one write. After an error the file has the length it had before.
    Error Append(std::string_view record);
    // Closes and unlocks the file, which counts as closed whatever the result.
    Error Close() { return file.Close(); }
    void CloseQuietly() noexcept { file.CloseQuietly(); }

  private:
    void RemoveLast(std::size_t count);

    host::Descriptor file;
    FileIdentity identity{};
};

}  // namespace platform
