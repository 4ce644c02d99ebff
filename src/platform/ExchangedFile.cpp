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

// Reads an open file of `size` bytes.
Error ReadWhole(Descriptor& file, std::int64_t size, std::size_t limit, std::string& text) {
    if (size > static_cast<std::int64_t>(limit)) return EFBIG;
    std::string bytes(static_cast<std::size_t>(size), '\0');
    std::size_t got = 0;
    if (const Error error = file.ReadAt(std::as_writable_bytes(std::span(bytes)), 0, got)) return error;
    bytes.resize(got);
    text = std::move(bytes);
    return success;
}

}  // namespace

// --- A turn

Error ExchangedFile::Begin(const std::string& path) {
    End();
    const auto native = NativePath(path);
    if (!native) return ENOENT;
    const Error error = FindAndOpen(*native);
    if (error) End();
    return error;
}

void ExchangedFile::End() {
    folder.CloseQuietly();
    open.CloseQuietly();
}

// Follows links to where the file is, opens and locks it, and sets `now` to its state.
Error ExchangedFile::FindAndOpen(std::string path) {
    int waited = 0;
    for (int links = 0; links <= maxLinks;) {
        const std::size_t leafAt = path.rfind('/') + 1;  // 0 when there is no separator
        hostPath = path;
        leaf = path.substr(leafAt);
        formerLeaf = leaf + ".temp";
        Error error = OpenFile();
        if (!error) error = LockFile(waited);
        if (error == ELOOP) {
            ++links;
            path = host::ReadLink(path).value_or(path);
        } else if (!(error == ESTALE)) {
            return error;
        } else if (++waited >= host::lockTimeout) {
            return EBUSY;
        } else {
            Sleep(1);
        }
    }
    return ELOOP;
}

// Opens the file at `hostPath`, which is created if it is missing. ELOOP for a link, ESTALE if somebody else has just
// created it.
Error ExchangedFile::OpenFile() {
    struct stat status {};
    Error error = EWOULDBLOCK;
    for (int i = 0; i < tries && IsHeld(error); ++i) {
        if (i > 0) Sleep(pauseBetweenTries);
        error = open.Open(hostPath, O_RDWR | O_NOFOLLOW, 0, &status);
    }
    isNew = error == ENOENT;
    if (!isNew) return error || S_ISREG(status.st_mode) ? error : ENXIO;
    error = open.Create(hostPath, 0666);
    return error == EEXIST ? ESTALE : error;
}

// Locks the open file. ESTALE, with the file closed, if it has lost its name to another one meanwhile.
Error ExchangedFile::LockFile(int& waited) {
    if (const Error error = host::Lock(open, waited)) return error;
    // Opening the folder only now makes a network file system look at it again.
    if (const Error error = OpenFolder()) return error;
    struct stat status {};
    if (::fstat(open.Number(), &status) == 0) {
        now = StateFrom(status);
        if (StateOf(leaf).identity == now.identity) return success;
    }
    open.CloseQuietly();
    return ESTALE;
}

Error ExchangedFile::OpenFolder() {
    const std::string path = leaf.size() == hostPath.size() ? "." : hostPath.substr(0, hostPath.size() - leaf.size());
    const Error error = folder.OpenFolder(path, O_RDONLY);
    // A folder that may be searched but not read can only be opened with O_PATH.
    return error == EACCES ? folder.OpenFolder(path, O_PATH) : error;
}

Error ExchangedFile::Read(std::string& text, std::size_t limit) {
    std::string bytes;
    if (const Error error = ReadWhole(open, now.size, limit, bytes)) return error;
    // After a power cut some volumes show zeros in the place of what was not yet on the disk.
    const bool isEmpty = bytes.find_first_not_of('\0') == std::string::npos;
    if (isEmpty && !isNew)
        if (const Error error = ReadFormer(bytes, limit)) return error;
    text = std::move(bytes);
    return success;
}

// Leaves `text` as it is if there is no former state.
Error ExchangedFile::ReadFormer(std::string& text, std::size_t limit) const {
    Descriptor second;
    struct stat status {};
    const Error error = second.OpenAt(folder, formerLeaf, O_RDONLY | O_NOFOLLOW, 0, &status);
    if (error == ENOENT || error == ELOOP || error == ENXIO) return success;
    return error ? error : ReadWhole(second, status.st_size, limit, text);
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
    struct stat status {};
    if (const Error error = next.CommitKeeping(FormerPath(), status)) return error;
    // The names are not looked up for this, since the next process may begin its turn at the new file already.
    file = StateFrom(status);
    former = now;
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
    if (const Error error = ReadWhole(open, now.size, static_cast<std::size_t>(now.size), text)) return error;
    // A former state is not replaced by an empty one, which may be all that a power cut has left of the file.
    if (!text.empty() || StateOf(formerLeaf).size <= 0)
        if (const Error error = KeepFormer(text); error && !IsForbidden(error)) return error;
    Error error = open.WriteAt(parts, 0);
    if (!error && text.size() > total) error = open.Truncate(total);
    if (error) {
        // Restores the old contents; there was room for them before.
        const std::string_view whole = text;
        std::ignore = open.WriteAt({&whole, 1}, 0);
        std::ignore = open.Truncate(text.size());
    }
    // A network file system settles the time of the last change only when the data is on the server.
    if (!error && !canExchange) error = open.Sync();
    struct stat status {};
    file = ::fstat(open.Number(), &status) == 0 ? StateFrom(status) : FileState();
    return error;
}

Error ExchangedFile::KeepFormer(std::string_view text) {
    AtomicFile copy;
    if (const Error error = copy.Open(FormerPath())) return error;
    copy.Write(text);
    return copy.Commit();
}

}  // namespace platform
