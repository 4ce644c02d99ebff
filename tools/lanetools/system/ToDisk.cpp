// SPDX-License-Identifier: MIT
#include "lanetools/system/ToDisk.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <stdexcept>

#include "platform/Error.h"

namespace lanetools {

namespace {

namespace fs = std::filesystem;
using platform::Error;

// Opens the file or folder at `path`, and calls `sync` with its descriptor.
template <class Call>
Error OnOpened(const fs::path& path, Call sync) {
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) return errno;
    const Error error = sync(fd) == 0 ? platform::success : Error(errno);
    ::close(fd);
    return error;
}

Error SyncFolder(const fs::path& folder, const fs::path& inside) {
    const Error error = OnOpened(folder, ::fsync);
    // The folder may not be listed, or its volume does not know this for folders: then everything is synced.
    return error == EACCES || error == EINVAL ? OnOpened(inside, ::syncfs) : error;
}

// Waits until the name `path` of an existing file or folder is on the disk.
Error SyncName(const fs::path& path) {
    return SyncFolder(path.has_parent_path() ? path.parent_path() : ".", path);
}

void Demand(Error error, const std::string& path) {
    if (error) throw std::runtime_error(path + ": " + error.Text());
}

}  // namespace

void CommitToDisk(platform::AtomicFile& file, const std::string& path) {
    Error error = file.IsOpen() ? OnOpened(file.TemporaryName(), ::fsync) : platform::success;
    if (!error) error = file.Commit();
    if (!error) error = SyncName(path);
    Demand(error, path);
}

void SyncNamesIn(const std::string& path, const std::string& file) {
    Demand(SyncFolder(path, file), path);
}

void SyncVolumeOf(const std::string& path) {
    Demand(OnOpened(path, ::syncfs), path);
}

void MakeFolderOnDisk(const std::string& path, std::error_code& error) {
    const fs::path plain = fs::path(path).lexically_normal();
    const fs::path folder = plain.has_filename() ? plain : plain.parent_path();
    if (fs::create_directory(folder, error) && !error)
        if (const Error reason = SyncName(folder)) error.assign(reason.Code(), std::generic_category());
}

}  // namespace lanetools
