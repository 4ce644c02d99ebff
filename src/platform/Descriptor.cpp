// SPDX-License-Identifier: MIT
#include "platform/Descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <utility>
#include <vector>

#include "platform/Host.h"

namespace platform::host {

namespace {

constexpr int commonOpenFlags = O_CLOEXEC | O_NOCTTY | O_NONBLOCK;

}  // namespace

Descriptor::Descriptor(Descriptor&& other) noexcept : fd(std::exchange(other.fd, -1)) {}

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
    if (this != &other) {
        CloseQuietly();
        fd = std::exchange(other.fd, -1);
    }
    return *this;
}

Error Descriptor::Open(const std::string& hostPath, int flags, unsigned permissions, struct stat* status) {
    return Take(Retry([&] { return ::open(hostPath.c_str(), flags | commonOpenFlags, permissions); }), flags, status);
}

Error Descriptor::Create(const std::string& hostPath, unsigned permissions) {
    CloseQuietly();
    constexpr int flags = O_RDWR | O_CREAT | O_EXCL;
    fd = Retry([&] { return ::open(hostPath.c_str(), flags | commonOpenFlags, permissions); });
    return IsOpen() ? success : Error(errno);
}

Error Descriptor::OpenAt(const Descriptor& folder, const std::string& name, int flags, unsigned permissions,
                         struct stat* status) {
    return Take(Retry([&] { return ::openat(folder.fd, name.c_str(), flags | commonOpenFlags, permissions); }), flags,
                status);
}

// Makes this the owner of the descriptor that a call has just opened. The error of the call if it failed (-1).
Error Descriptor::Take(int number, int flags, struct stat* status) {
    Descriptor opened;
    opened.fd = number;
    if (!opened.IsOpen()) return errno;
    struct stat own {};
    if (status == nullptr) status = &own;
    if (::fstat(opened.fd, status) != 0) return errno;
    if ((flags & O_ACCMODE) == O_RDONLY && !S_ISREG(status->st_mode)) return ENXIO;
    if (S_ISDIR(status->st_mode)) return EISDIR;
    if (!S_ISREG(status->st_mode)) {
        // Only opening must not block; reading and writing may.
        const int now = ::fcntl(opened.fd, F_GETFL);
        if (now < 0 || ::fcntl(opened.fd, F_SETFL, now & ~O_NONBLOCK) < 0) return errno;
    }
    *this = std::move(opened);
    return success;
}

Error Descriptor::OpenFolder(const std::string& hostPath, int flags) {
    CloseQuietly();
    fd = Retry([&] { return ::open(hostPath.c_str(), flags | O_DIRECTORY | O_CLOEXEC); });
    return IsOpen() ? success : Error(errno);
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

Error Descriptor::ReadAt(std::span<std::byte> out, std::uint64_t from, std::size_t& got) {
    got = 0;
    while (got < out.size()) {
        const auto at = static_cast<off_t>(from + got);
        const ssize_t count = Retry([&] { return ::pread(fd, out.data() + got, out.size() - got, at); });
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

Error Descriptor::WriteAt(std::span<const std::string_view> parts, std::uint64_t from) {
    std::vector<iovec> pieces;
    std::uint64_t at = 0;
    for (std::string_view part : parts) {
        const std::uint64_t end = at + part.size();
        if (from > at) part.remove_prefix(static_cast<std::size_t>(std::min(from, end) - at));
        if (!part.empty()) pieces.push_back({const_cast<char*>(part.data()), part.size()});
        at = end;
    }
    at = from;
    for (std::span<iovec> rest = pieces; !rest.empty();) {
        const int count = static_cast<int>(std::min<std::size_t>(rest.size(), IOV_MAX));
        const ssize_t written = Retry([&] { return ::pwritev(fd, rest.data(), count, static_cast<off_t>(at)); });
        if (written < 0) return errno;
        if (written == 0) return ENOSPC;
        at += static_cast<std::uint64_t>(written);
        auto left = static_cast<std::size_t>(written);
        for (; !rest.empty() && left >= rest.front().iov_len; rest = rest.subspan(1))
            left -= rest.front().iov_len;
        if (left == 0) continue;
        rest.front() = {static_cast<char*>(rest.front().iov_base) + left, rest.front().iov_len - left};
    }
    return success;
}

Error Descriptor::Truncate(std::uint64_t length) {
    return Try([&] { return ::ftruncate(fd, static_cast<off_t>(length)); });
}

Error Descriptor::Sync() {
    const Error error = Try([&] { return ::fsync(fd); });
    return error == EINVAL ? success : error;
}

Error Descriptor::Close() {
    if (!IsOpen()) return success;
    // The descriptor is closed even when close was interrupted by a signal, so there is no second try.
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
    // The length is only a hint: the file may be growing, and some files do not report theirs.
    constexpr std::size_t minBlock = 4096;
    const std::size_t expected = status.st_size > 0 ? static_cast<std::size_t>(status.st_size) : 0;
    std::string bytes(std::min(std::max(expected, minBlock), limit), '\0');
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
