#include "platform/Descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <utility>

#include "platform/Host.h"

namespace platform::host {

Descriptor::Descriptor(Descriptor&& other) noexcept : fd(std::exchange(other.fd, -1)) {}

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
    if (this != &other) {
        CloseQuietly();
        fd = std::exchange(other.fd, -1);
    }
    return *this;
}

Error Descriptor::Open(const std::string& hostPath, int flags, unsigned permissions) {
    Descriptor opened;
    opened.fd = Retry([&] { return ::open(hostPath.c_str(), flags | O_CLOEXEC | O_NOCTTY | O_NONBLOCK, permissions); });
    if (!opened.IsOpen()) return errno;
    struct stat status {};
    if (::fstat(opened.fd, &status) != 0) return errno;
    if ((flags & O_ACCMODE) == O_RDONLY && !S_ISREG(status.st_mode)) return ENXIO;
    if (S_ISDIR(status.st_mode)) return EISDIR;
    if (!S_ISREG(status.st_mode)) {
        // Only the opening must not block.
        const int now = ::fcntl(opened.fd, F_GETFL);
        if (now < 0 || ::fcntl(opened.fd, F_SETFL, now & ~O_NONBLOCK) < 0) return errno;
    }
    *this = std::move(opened);
    return success;
}

Error Descriptor::Read(std::span<std::byte> out, std::size_t& got) {
    got = 0;
    while (got < out.size()) {
        const ssize_t count = Retry([&] { return ::read(fd, out.data() + got, out.size() - got); });
        if (count < 0) return errno;
        if (count == 0) break;
        got += static_cast<std::size_t>(count);
    }
    return success;
}

Error Descriptor::Write(std::span<const std::byte> data) {
    while (!data.empty()) {
        const ssize_t count = Retry([&] { return ::write(fd, data.data(), data.size()); });
        if (count < 0) return errno;
        if (count == 0) return ENOSPC;
        data = data.subspan(static_cast<std::size_t>(count));
    }
    return success;
}

Error Descriptor::Close() {
    if (!IsOpen()) return success;
    // The descriptor is gone even when a signal came in between, so there is no second try.
    return ::close(std::exchange(fd, -1)) == 0 || errno == EINTR ? success : Error(errno);
}

void Descriptor::CloseQuietly() noexcept {
    if (IsOpen()) ::close(std::exchange(fd, -1));
}

Error ReadFile(const std::string& hostPath, std::string& text, std::size_t limit) {
    Descriptor file;
    if (const Error error = file.Open(hostPath, O_RDONLY)) return error;
    struct stat status {};
    if (::fstat(file.Number(), &status) != 0) return errno;
    // The length is only a hint: the file may grow meanwhile, and some files do not report theirs.
    constexpr std::size_t smallestBlock = 4096;
    const std::size_t expected = status.st_size > 0 ? static_cast<std::size_t>(status.st_size) : 0;
    std::string bytes(std::min(std::max(expected, smallestBlock), limit), '\0');
    std::size_t used = 0;
    while (true) {
        std::size_t got = 0;
        if (const Error error = file.Read(std::as_writable_bytes(std::span(bytes).subspan(used)), got)) return error;
        used += got;
        if (used < bytes.size() || used == limit) break;
        bytes.resize(std::min(bytes.size() * 2, limit));
    }
    bytes.resize(used);
    text = std::move(bytes);
    return success;
}

}  // namespace platform::host
