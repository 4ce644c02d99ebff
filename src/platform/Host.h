// Descriptors and paths of the host, for the files of this folder only.
#pragma once

#include <sys/stat.h>

#include <cerrno>
#include <cstddef>
#include <span>
#include <string>

namespace platform::host {

// Calls `call` again for as long as a signal interrupts it.
template <class Call>
auto Retry(Call call) {
    auto result = call();
    while (result == -1 && errno == EINTR)
        result = call();
    return result;
}

// Opens a host path with open's flags. A folder gives EISDIR. A pipe without a partner does not block.
int OpenDescriptor(const std::string& hostPath, int flags, mode_t permissions, int& fd);
int CloseDescriptor(int fd);
int ReadDescriptor(int fd, std::span<std::byte> out, std::size_t& got);
int WriteDescriptor(int fd, std::span<const std::byte> data);

// All bytes from the current position on; EFBIG beyond `limit`. `text` changes only when it succeeds.
int ReadToEnd(int fd, std::string& text, std::size_t limit);

}  // namespace platform::host
