// SPDX-License-Identifier: MIT
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <memory>
#include <tuple>

#include "platform/Drives.h"
#include "platform/Files.h"
#include "platform/Host.h"

namespace platform {

namespace {

using host::Descriptor;

constexpr std::size_t copyBlock = std::size_t{256} << 10;

Error CopyContents(Descriptor& source, Descriptor& target) {
    const auto block = std::make_unique_for_overwrite<std::array<std::byte, copyBlock>>();
    std::size_t got = block->size();
    while (got == block->size()) {
        if (const Error error = source.Read(*block, got)) return error;
        if (const Error error = target.Write(std::span(*block).first(got))) return error;
    }
    return success;
}

// Makes `target` a copy of `source` and closes it.
Error FillCopy(Descriptor& source, Descriptor& target, const struct stat& formerTarget, mode_t permissions) {
    const bool isFile = S_ISREG(formerTarget.st_mode);
    if (isFile && formerTarget.st_size > 0) {
        if (const Error error = host::Try([&] { return ::ftruncate(target.Number(), 0); })) return error;
    }
    if (const Error error = CopyContents(source, target)) return error;
    // A failure does not matter: some volumes do not have permission bits.
    if (isFile && (formerTarget.st_mode & 0777) != permissions)
        std::ignore = host::Try([&] { return ::fchmod(target.Number(), permissions); });
    return target.Close();
}

}  // namespace

Error CopyFile(const std::string& from, const std::string& to) {
    const auto nativeFrom = NativePath(from);
    const auto nativeTo = NativePath(to);
    if (!nativeFrom || !nativeTo) return ENOENT;
    Descriptor source, target;
    struct stat sourceStatus {
    }, targetStatus{};
    if (const Error error = source.Open(*nativeFrom, O_RDONLY)) return error;
    if (::fstat(source.Number(), &sourceStatus) != 0) return errno;
    // The target is opened without truncating it, until it is known not to be the source itself.
    if (const Error error = target.Open(*nativeTo, O_WRONLY | O_CREAT, 0666)) return error;
    if (::fstat(target.Number(), &targetStatus) != 0) return errno;
    if (targetStatus.st_dev == sourceStatus.st_dev && targetStatus.st_ino == sourceStatus.st_ino) return EEXIST;

    const Error error = FillCopy(source, target, targetStatus, sourceStatus.st_mode & 0777);
    if (error && S_ISREG(targetStatus.st_mode)) ::unlink(nativeTo->c_str());
    return error;
}

}  // namespace platform
