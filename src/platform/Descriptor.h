// An open descriptor of the host, for the files of this folder only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "platform/Error.h"

struct stat;

namespace platform::host {

// Movable, closes itself on destruction.
class Descriptor {
  public:
    Descriptor() = default;
    Descriptor(Descriptor&& other) noexcept;
    Descriptor& operator=(Descriptor&& other) noexcept;
    ~Descriptor() { CloseQuietly(); }

    // Opens a host path with open's flags; needs a closed descriptor. For reading only, whatever is no regular file, a
    // folder too, gives ENXIO: it may have no end, or nobody who ever writes into it. Otherwise a folder gives EISDIR.
    // A pipe without a partner does not block.
    // `status`, if asked for, is what fstat says of the file.
    Error Open(const std::string& hostPath, int flags, unsigned permissions = 0, struct stat* status = nullptr);
    // Makes a file that must not be there yet (EEXIST), for reading and writing.
    Error Create(const std::string& hostPath, unsigned permissions);
    // As Open, with a name in an open folder.
    Error OpenAt(const Descriptor& folder, const std::string& name, int flags, unsigned permissions = 0,
                 struct stat* status = nullptr);
    // Opens a folder instead of what was open; ENOTDIR for anything else.
    Error OpenFolder(const std::string& hostPath, int flags);
    bool IsOpen() const { return fd >= 0; }
    // For calls of the host; -1 when it is closed.
    int Number() const { return fd; }

    // Reads up to out.size() bytes; `got` is what came before the end of the file.
    Error Read(std::span<std::byte> out, std::size_t& got);
    // The same from a position on, which is not moved.
    Error ReadAt(std::span<std::byte> out, std::uint64_t from, std::size_t& got);
    // Writes all of `data`.
    Error Write(std::span<const std::byte> data);
    // Writes those of the bytes of all `parts`, one after the other, that come `from` bytes after the first, at that
    // position of the file.
    Error WriteAt(std::span<const std::string_view> parts, std::uint64_t from);
    Error Truncate(std::uint64_t length);
    // It counts as closed afterwards, whatever the result. Success also when it was not open.
    Error Close();
    // For clean-up and after reading, when nothing depends on the result.
    void CloseQuietly() noexcept;

  private:
    Error Take(int opened, int flags, struct stat* status);

    int fd = -1;
};

// The bytes of the file at a host path, the first `limit` of them when it has more. `text` changes only when it
// succeeds.
Error ReadFile(const std::string& hostPath, std::string& text, std::size_t limit);

}  // namespace platform::host
