#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "platform/Drives.h"
#include "platform/Files.h"
#include "platform/Host.h"

namespace platform {

namespace {

int OpenFlags(OpenMode mode) {
    switch (mode) {
        case OpenMode::Read:
            return O_RDONLY;
        case OpenMode::Update:
            return O_RDWR;
        case OpenMode::CreateOrEmpty:
            return O_RDWR | O_CREAT | O_TRUNC;
        case OpenMode::CreateOrKeep:
            return O_RDWR | O_CREAT;
    }
    return O_RDONLY;
}

}  // namespace

File::File(File&& other) noexcept : fd(std::exchange(other.fd, -1)) {}

File& File::operator=(File&& other) noexcept {
    if (this != &other) {
        Close();
        fd = std::exchange(other.fd, -1);
    }
    return *this;
}

File::~File() {
    Close();
}

int File::Open(const std::string& path, OpenMode mode) {
    if (IsOpen()) return EBUSY;
    const auto native = NativePath(path);
    if (!native) return ENOENT;
    return host::OpenDescriptor(*native, OpenFlags(mode), 0666, fd);
}

int File::Read(std::span<std::byte> out, std::size_t& got) {
    return host::ReadDescriptor(fd, out, got);
}

int File::Write(std::span<const std::byte> data) {
    return host::WriteDescriptor(fd, data);
}

int File::Write(std::string_view text) {
    return Write(std::as_bytes(std::span(text)));
}

int File::SeekSet(std::int64_t offset) {
    return ::lseek(fd, offset, SEEK_SET) < 0 ? errno : 0;
}

int File::SeekFromEnd(std::int64_t offset) {
    return ::lseek(fd, offset, SEEK_END) < 0 ? errno : 0;
}

int File::Tell(std::int64_t& position) const {
    const off_t at = ::lseek(fd, 0, SEEK_CUR);
    if (at < 0) return errno;
    position = at;
    return 0;
}

int File::Length(std::int64_t& length) const {
    struct stat status {};
    if (::fstat(fd, &status) != 0) return errno;
    length = status.st_size;
    return 0;
}

int File::Truncate(std::int64_t length) {
    return host::Retry([&] { return ::ftruncate(fd, length); }) != 0 ? errno : 0;
}

int File::Flush() {
    if (host::Retry([&] { return ::fsync(fd); }) == 0) return 0;
    // Pipes and devices have nothing to wait for.
    return errno == EINVAL ? 0 : errno;
}

int File::Close() {
    return IsOpen() ? host::CloseDescriptor(std::exchange(fd, -1)) : 0;
}

int ReadFile(const std::string& path, std::string& text, std::size_t limit) {
    const auto native = NativePath(path);
    if (!native) return ENOENT;
    int fd = -1;
    if (const int error = host::OpenDescriptor(*native, O_RDONLY, 0, fd)) return error;
    const int error = host::ReadToEnd(fd, text, limit);
    host::CloseDescriptor(fd);
    return error;
}

}  // namespace platform
