#include "platform/Host.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>

namespace platform::host {

int OpenDescriptor(const std::string& hostPath, int flags, mode_t permissions, int& fd) {
    const int opened =
        Retry([&] { return ::open(hostPath.c_str(), flags | O_CLOEXEC | O_NOCTTY | O_NONBLOCK, permissions); });
    if (opened < 0) return errno;

    struct stat status {};
    int error = 0;
    if (::fstat(opened, &status) != 0) {
        error = errno;
    } else if (S_ISDIR(status.st_mode)) {
        error = EISDIR;
    } else if (!S_ISREG(status.st_mode)) {
        // Only the opening must not block.
        const int now = ::fcntl(opened, F_GETFL);
        if (now < 0 || ::fcntl(opened, F_SETFL, now & ~O_NONBLOCK) < 0) error = errno;
    }
    if (error != 0) {
        ::close(opened);
        return error;
    }
    fd = opened;
    return 0;
}

int CloseDescriptor(int fd) {
    // The descriptor is gone even when a signal came in between, so there is no second try.
    return ::close(fd) == 0 || errno == EINTR ? 0 : errno;
}

int ReadDescriptor(int fd, std::span<std::byte> out, std::size_t& got) {
    got = 0;
    while (got < out.size()) {
        const ssize_t count = Retry([&] { return ::read(fd, out.data() + got, out.size() - got); });
        if (count < 0) return errno;
        if (count == 0) break;
        got += static_cast<std::size_t>(count);
    }
    return 0;
}

int WriteDescriptor(int fd, std::span<const std::byte> data) {
    while (!data.empty()) {
        const ssize_t count = Retry([&] { return ::write(fd, data.data(), data.size()); });
        if (count < 0) return errno;
        if (count == 0) return ENOSPC;
        data = data.subspan(static_cast<std::size_t>(count));
    }
    return 0;
}

int ReadToEnd(int fd, std::string& text, std::size_t limit) {
    struct stat status {};
    if (::fstat(fd, &status) != 0) return errno;
    const std::size_t expected = status.st_size > 0 ? static_cast<std::size_t>(status.st_size) : 0;
    if (S_ISREG(status.st_mode) && expected > limit) return EFBIG;

    // The length is only a hint: the file may grow meanwhile, and some files do not tell theirs.
    std::string bytes(std::max<std::size_t>(expected, 4096), '\0');
    std::size_t used = 0;
    while (true) {
        std::size_t got = 0;
        if (const int error = ReadDescriptor(fd, std::as_writable_bytes(std::span(bytes).subspan(used)), got))
            return error;
        used += got;
        if (used > limit) return EFBIG;
        if (used < bytes.size()) break;
        bytes.resize(bytes.size() * 2);
    }
    bytes.resize(used);
    text = std::move(bytes);
    return 0;
}

}  // namespace platform::host
