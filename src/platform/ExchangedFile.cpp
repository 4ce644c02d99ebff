// SPDX-License-Identifier: MIT
#include "platform/ExchangedFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <numeric>
#include <tuple>
#include <utility>

#include "platform/AtomicFile.h"
#include "platform/Clock.h"
#include "platform/Drives.h"
#include "platform/Host.h"
#include "platform/Lock.h"

namespace platform {

namespace {

using host::Descriptor;

using Parts = std::span<const std::string_view>;

constexpr int maxLinks = 40;
constexpr int pauseBetweenTries = 50;  // ms
constexpr int tries = 101;             // 5 s in all

FileState StateFrom(const struct stat& status) {
    return {{status.st_dev, status.st_ino},
            status.st_size,
            status.st_mtim.tv_sec,
            status.st_mtim.tv_nsec,
            status.st_mode,
            status.st_uid,
            status.st_gid,
            status.st_nlink};
}

bool HaveSamePermissions(const FileState& a, const FileState& b) {
    return a.mode == b.mode && a.owner == b.owner && a.group == b.group;
}

// Another program has exclusive use of the file at the moment.
bool IsHeld(Error error) {
    return error == EWOULDBLOCK || error == EBUSY || error == ETXTBSY;
}

bool CannotExchange(Error error) {
    return error == EINVAL || error == ENOSYS || error == EOPNOTSUPP;
}

bool IsForbidden(Error error) {
    return error == EACCES || error == EPERM;
}

}  // namespace

// --- A turn

Error ExchangedFile::Begin(const std::string& path) {
    End();
    const auto native = NativePath(path);
    if (!native) return ENOENT;
    Error error = Find(*native);
    if (!error && !IsAsWritten()) {
        // Opening it, or creating it, is the only way to be sure that it can be written.
        error = OpenFile(O_CREAT);
    }
    if (error) End();
    return error;
}

void ExchangedFile::End() {
    open.CloseQuietly();
    folder.CloseQuietly();
}

// Follows links to where the file is, opens and locks its folder, and sets `now` to the state of the file, or to {} if
// it does not exist yet.
Error ExchangedFile::Find(std::string path) {
    for (int links = 0; links <= maxLinks; ++links) {
        const std::size_t leafAt = path.rfind('/') + 1;  // 0 when there is no separator
        hostPath = path;
        leaf = path.substr(leafAt);
        formerLeaf = leaf + ".temp";
        now = {};
        if (const Error error = OpenFolder(leafAt == 0 ? "." : path.substr(0, leafAt))) return error;
        struct stat status {};
        if (::fstatat(folder.Number(), leaf.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0)
            return errno == ENOENT ? success : Error(errno);
        now = StateFrom(status);
        if (!S_ISLNK(status.st_mode)) return S_ISREG(status.st_mode) ? success : ENXIO;
        std::string target(static_cast<std::size_t>(std::max<off_t>(status.st_size, 1024)), '\0');
        const ssize_t length = ::readlinkat(folder.Number(), leaf.c_str(), target.data(), target.size());
        if (length < 0) return errno;
        target.resize(static_cast<std::size_t>(length));
        path = target.starts_with('/') ? target : path.substr(0, leafAt) + target;
    }
    return ELOOP;
}

Error ExchangedFile::OpenFolder(const std::string& path) {
    Error error = folder.OpenFolder(path, O_RDONLY);
    // A folder that may be searched but not read can only be opened with O_PATH, and then not locked.
    if (error == EACCES) error = folder.OpenFolder(path, O_PATH);
    return error ? error : host::Lock(folder);
}

Error ExchangedFile::OpenFile(int flags) {
    struct stat status {};
    Error error = EWOULDBLOCK;
    for (int i = 0; i < tries && IsHeld(error); ++i) {
        if (i > 0) Sleep(pauseBetweenTries);
        error = open.OpenAt(folder, leaf, O_RDWR | O_NOFOLLOW | flags, 0666, &status);
    }
    if (!error) now = StateFrom(status);
    return error;
}

Error ExchangedFile::Read(std::string& text, std::size_t limit) {
    if (!open.IsOpen())
        if (const Error error = OpenFile(0)) return error;
    if (now.size > static_cast<std::int64_t>(limit)) return EFBIG;
    std::string bytes(static_cast<std::size_t>(now.size), '\0');
    std::size_t got = 0;
    if (const Error error = open.ReadAt(std::as_writable_bytes(std::span(bytes)), 0, got)) return error;
    bytes.resize(got);
    text = std::move(bytes);
    return success;
}

FileState ExchangedFile::StateOf(const std::string& name) const {
    struct stat status {};
    const bool exists = ::fstatat(folder.Number(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0;
    return exists ? StateFrom(status) : FileState();
}

// --- The new state

Error ExchangedFile::Replace(Parts parts, std::uint64_t same) {
    const std::uint64_t total =
        std::accumulate(parts.begin(), parts.end(), std::uint64_t{0},
                        [](std::uint64_t sum, std::string_view part) { return sum + part.size(); });
    if (!IsAsWritten()) former = {};
    Error error = EINVAL;
    if (canExchange) {
        const bool isKnown = former.size >= 0 && former.names == 1 && HaveSamePermissions(former, now);
        error = isKnown ? OverwriteFormer(parts, same, total) : WriteNewFile(parts);
        canExchange = !CannotExchange(error);
    }
    if (!canExchange || IsForbidden(error)) error = WriteInPlace(parts, total);
    if (error) file = former = {};
    return error;
}

Error ExchangedFile::WriteNewFile(Parts parts) {
    AtomicFile next;
    if (const Error error = next.Open(hostPath)) return error;
    next.Write(parts);
    if (const Error error = next.CommitKeeping(FormerPath())) return error;
    file = StateOf(leaf);
    former = StateOf(formerLeaf);
    sameAsFormer = 0;
    return success;
}

Error ExchangedFile::OverwriteFormer(Parts parts, std::uint64_t same, std::uint64_t total) {
    Descriptor second;
    struct stat status {};
    if (second.OpenAt(folder, formerLeaf, O_RDWR | O_NOFOLLOW, 0, &status) || StateFrom(status) != former)
        return WriteNewFile(parts);
    Error error = second.WriteAt(parts, std::min(same, sameAsFormer));
    if (!error && former.size > static_cast<std::int64_t>(total)) error = second.Truncate(total);
    if (!error && ::fstat(second.Number(), &status) != 0) error = errno;
    if (const Error closed = second.Close(); !error) error = closed;
    if (!error) error = host::ExchangeNames(folder.Number(), formerLeaf, leaf);
    if (error) {
        // The former state has been overwritten.
        ::unlinkat(folder.Number(), formerLeaf.c_str(), 0);
        return error;
    }
    former = now;
    file = StateFrom(status);
    sameAsFormer = same;
    return success;
}

Error ExchangedFile::WriteInPlace(Parts parts, std::uint64_t total) {
    std::string text;
    if (const Error error = Read(text, static_cast<std::size_t>(now.size))) return error;
    if (const Error error = KeepFormer(text); error && !IsForbidden(error)) return error;
    Error error = open.WriteAt(parts, 0);
    if (!error && text.size() > total) error = open.Truncate(total);
    if (error) {
        // Restores the old contents; there was room for them before.
        const std::string_view whole = text;
        std::ignore = open.WriteAt({&whole, 1}, 0);
        std::ignore = open.Truncate(text.size());
    }
    open.CloseQuietly();
    file = StateOf(leaf);
    return error;
}

Error ExchangedFile::KeepFormer(std::string_view text) {
    AtomicFile copy;
    if (const Error error = copy.Open(FormerPath())) return error;
    copy.Write(text);
    return copy.Commit();
}

}  // namespace platform
