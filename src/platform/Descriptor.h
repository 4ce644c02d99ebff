// An open descriptor of the host, for the files of this folder only.
#pragma once

#include <cstddef>
#include <span>
#include <string>

#include "platform/Error.h"

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
    Error Open(const std::string& hostPath, int flags, unsigned permissions = 0);
    bool IsOpen() const { return fd >= 0; }
    // For calls of the host; -1 when it is closed.
    int Number() const { return fd; }

    // Reads up to out.size() bytes; `got` is what came before the end of the file.
    Error Read(std::span<std::byte> out, std::size_t& got);
    // Writes all of `data`.
    Error Write(std::span<const std::byte> data);
    // It counts as closed afterwards, whatever the result. Success also when it was not open.
    Error Close();
    // For clean-up and after reading, when nothing depends on the result.
    void CloseQuietly() noexcept;

  private:
    int fd = -1;
};

// The bytes of the file at a host path, the first `limit` of them when it has more. `text` changes only when it
// succeeds.
Error ReadFile(const std::string& hostPath, std::string& text, std::size_t limit);

}  // namespace platform::host
