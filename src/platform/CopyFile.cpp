#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <memory>

#include "platform/Drives.h"
#include "platform/Files.h"
#include "platform/Host.h"

namespace platform {

namespace {

constexpr std::size_t copyBlock = std::size_t{256} << 10;

// A longer file is cut at the end and not emptied at first, which would have the host put the copy on the disk at once.
int CopyContents(int source, int target, off_t formerLength) {
    const auto block = std::make_unique_for_overwrite<std::array<std::byte, copyBlock>>();
    off_t length = 0;
    while (true) {
        std::size_t got = 0;
        if (const int error = host::ReadDescriptor(source, *block, got)) return error;
        if (const int error = host::WriteDescriptor(target, std::span(*block).first(got))) return error;
        length += static_cast<off_t>(got);
        if (got < block->size()) break;
    }
    if (formerLength > length && host::Retry([&] { return ::ftruncate(target, length); }) != 0) return errno;
    return 0;
}

int CopyInto(int source, const struct stat& sourceStatus, const std::string& to) {
    // The target is written only after it is known to be another file than the source.
    int target = -1;
    if (const int error = host::OpenDescriptor(to, O_WRONLY | O_CREAT, 0666, target)) return error;
    struct stat status {};
    if (::fstat(target, &status) != 0) {
        const int error = errno;
        host::CloseDescriptor(target);
        return error;
    }
    if (status.st_dev == sourceStatus.st_dev && status.st_ino == sourceStatus.st_ino) {
        host::CloseDescriptor(target);
        return EEXIST;
    }

    int error = CopyContents(source, target, status.st_size);
    // Some volumes know no permission bits; the copy is good all the same.
    if (error == 0 && S_ISREG(status.st_mode) && (status.st_mode & 0777) != (sourceStatus.st_mode & 0777))
        static_cast<void>(::fchmod(target, sourceStatus.st_mode & 0777));
    if (const int closing = host::CloseDescriptor(target); error == 0) error = closing;
    if (error != 0 && S_ISREG(status.st_mode)) ::unlink(to.c_str());
    return error;
}

}  // namespace

int CopyFile(const std::string& from, const std::string& to) {
    const auto nativeFrom = NativePath(from);
    const auto nativeTo = NativePath(to);
    if (!nativeFrom || !nativeTo) return ENOENT;
    int source = -1;
    if (const int error = host::OpenDescriptor(*nativeFrom, O_RDONLY, 0, source)) return error;
    struct stat status {};
    const int error = ::fstat(source, &status) != 0 ? errno : CopyInto(source, status, *nativeTo);
    host::CloseDescriptor(source);
    return error;
}

}  // namespace platform
