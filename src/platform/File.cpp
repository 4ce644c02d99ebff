// SPDX-License-Identifier: MIT
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/Drives.h"
#include "platform/Files.h"
#include "platform/Host.h"

namespace platform {

namespace {

constexpr unsigned newFilePermissions = 0666;  // without the bits of the umask

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

Error File::Open(const std::string& path, OpenMode mode) {
    if (IsOpen()) return EBUSY;
    const auto native = NativePath(path);
    if (!native) return ENOENT;
    return descriptor.Open(*native, OpenFlags(mode), newFilePermissions);
}

Error File::Write(std::string_view text) {
    return Write(std::as_bytes(std::span(text)));
}

Error File::SeekSet(std::int64_t offset) {
    return ::lseek(descriptor.Number(), offset, SEEK_SET) < 0 ? errno : 0;
}

Error File::SeekFromEnd(std::int64_t offset) {
    return ::lseek(descriptor.Number(), offset, SEEK_END) < 0 ? errno : 0;
}

Error File::Tell(std::int64_t& position) const {
    const off_t at = ::lseek(descriptor.Number(), 0, SEEK_CUR);
    if (at < 0) return errno;
    position = at;
    return success;
}

Error File::Length(std::int64_t& length) const {
    struct stat status {};
    if (::fstat(descriptor.Number(), &status) != 0) return errno;
    length = status.st_size;
    return success;
}

Error File::Truncate(std::int64_t length) {
    return host::Try([&] { return ::ftruncate(descriptor.Number(), length); });
}

Error ReadFile(const std::string& path, std::string& text, std::size_t limit) {
    const auto native = NativePath(path);
    return native ? host::ReadFile(*native, text, limit) : ENOENT;
}

}  // namespace platform
