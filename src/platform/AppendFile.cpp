// SPDX-License-Identifier: MIT
#include "platform/AppendFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <tuple>

#include "platform/Drives.h"
#include "platform/Host.h"
#include "platform/Lock.h"

namespace platform {

Error AppendFile::Open(const std::string& path) {
    if (file.IsOpen()) return EBUSY;
    const auto native = NativePath(path);
    if (!native) return ENOENT;
    struct stat status {};
    if (const Error error = file.Open(*native, O_WRONLY | O_CREAT | O_APPEND, 0666, &status)) return error;
    identity = {status.st_dev, status.st_ino};
    const Error error = host::Lock(file);
    if (error) file.CloseQuietly();
    return error;
}

Error AppendFile::Append(std::string_view record) {
    std::string_view rest = record;
    while (!rest.empty()) {
        const ssize_t count = host::Retry([&] { return ::write(file.Number(), rest.data(), rest.size()); });
        if (count <= 0) {
            const Error error = count < 0 ? errno : ENOSPC;
            RemoveLast(record.size() - rest.size());
            return error;
        }
        rest.remove_prefix(static_cast<std::size_t>(count));
    }
    return success;
}

// Removes the last `count` bytes, which have just been written.
void AppendFile::RemoveLast(std::size_t count) {
    const off_t end = ::lseek(file.Number(), 0, SEEK_CUR);
    if (count == 0 || end < static_cast<off_t>(count)) return;
    std::ignore = host::Try([&] { return ::ftruncate(file.Number(), end - static_cast<off_t>(count)); });
}

}  // namespace platform
