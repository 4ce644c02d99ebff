// SPDX-License-Identifier: MIT
// A file descriptor of the host. For the files of this folder only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "platform/Error.h"

struct stat;

namespace platform::host {

// Movable; closes itself on destruction.
class Descriptor {
  public:
    Descriptor() = default;
    Descriptor(Descriptor&& other) noexcept;
    Descriptor& operator=(Descriptor&& other) noexcept;
    ~Descriptor() { CloseQuietly(); }

    // Opens a host path with the flags of open(2); the descriptor must be closed. For reading only, anything but a
    // regular file gives ENXIO, since a read of it might never end; otherwise a folder gives EISDIR. Opening a pipe
    // without a partner does not block. `status`, if not null, receives the result of fstat.
    Error Open(const std::string& hostPath, int flags, unsigned permissions = 0, struct stat* status = nullptr);
    // Creates a file for reading and writing. EEXIST if there is one already.
    Error Create(const std::string& hostPath, unsigned permissions);
    // As Open, for a name in an open folder.
    Error OpenAt(const Descriptor& folder, const std::string& name, int flags, unsigned permissions = 0,
                 struct stat* status = nullptr);
    // Closes what was open and opens a folder; ENOTDIR for anything else.
    Error OpenFolder(const std::string& hostPath, int flags);
    bool IsOpen() const { return fd >= 0; }
    // For system calls; -1 if closed.
    int Number() const { return fd; }

    // Reads out.size() bytes, or fewer at the end of the file; `got` is their number.
    Error Read(std::span<std::byte> out, std::size_t& got);
    // The same from position `from`, without moving the current position.
    Error ReadAt(std::span<std::byte> out, std::uint64_t from, std::size_t& got);
    // Writes all of `data`.
    Error Write(std::span<const std::byte> data);
    // Writes the concatenation of `parts`, from its byte `from` on, to the same position in the file.
    Error WriteAt(std::span<const std::string_view> parts, std::uint64_t from);
    Error Truncate(std::uint64_t length);
    // Waits until the file's data is on the disk. Success for pipes and devices, for which that is not supported.
    Error Sync();
    // Closes the descriptor, which counts as closed whatever the result. Success if it was not open.
    Error Close();
    // For clean-up and after reading, when nothing depends on the result.
    void CloseQuietly() noexcept;

  private:
    Error Take(int opened, int flags, struct stat* status);

    int fd = -1;
};

// Reads the file at a host path into `text`, but no more than `limit` bytes. After an error `text` is unchanged.
Error ReadFile(const std::string& hostPath, std::string& text, std::size_t limit);

}  // namespace platform::host
