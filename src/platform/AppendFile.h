// A file that grows by whole records, also when several processes add to it at the same time.
#pragma once

#include <string>
#include <string_view>

#include "platform/Files.h"

namespace platform {

class AppendFile {
  public:
    // Opens the file, or makes it, and waits until no other process of ours adds to it, for 5 s at most (EBUSY). EISDIR
    // for a folder; EBUSY when a file is open already. A link is followed.
    Error Open(const std::string& path);
    // Which file is open.
    const FileIdentity& Identity() const { return identity; }
    // Adds `record` at the end, in one write. After an error the file ends where it did before.
    Error Append(std::string_view record);
    // Closes the file, which others may add to from now on. It counts as closed whatever the result.
    Error Close() { return file.Close(); }
    void CloseQuietly() noexcept { file.CloseQuietly(); }

  private:
    void CutOff(std::size_t count);

    host::Descriptor file;
    FileIdentity identity{};
};

}  // namespace platform
