// SPDX-License-Identifier: MIT
#include "platform/AtomicFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <optional>
#include <set>
#include <tuple>
#include <vector>

#include "platform/Drives.h"
#include "platform/Files.h"
#include "platform/Host.h"

namespace platform {

namespace {

using host::Descriptor;

constexpr int maxNumber = 1000;

std::string TemporaryLeaf(int maker, int number) {
    return ".lw" + std::to_string(maker) + '-' + std::to_string(number) + ".tmp";
}

// The process that made the temporary file of this name; nothing for any other name.
std::optional<pid_t> MakerOf(const std::string& leaf) {
    int maker = 0, number = 0;
    const bool isRead = std::sscanf(leaf.c_str(), ".lw%d-%d", &maker, &number) == 2;
    return isRead && leaf == TemporaryLeaf(maker, number) ? std::optional(maker) : std::nullopt;
}

// --- All paths are the host's.

// A rename would replace a write-protected file, so the protection is checked here.
Error CheckTarget(const std::string& path) {
    Descriptor existing;
    const Error error = existing.Open(path, O_RDWR | O_NOFOLLOW);
    return error == ENOENT || error == ELOOP ? success : error;
}

// Makes the file at `path`, which must not be there yet (EEXIST), and locks it.
Error CreateLocked(const std::string& path, Descriptor& file) {
    if (const Error error = file.Create(path, 0666)) return error;
    std::ignore = host::Try([&] { return ::flock(file.Number(), LOCK_EX); });  // some volumes know no locks
    struct stat status {};
    if (::fstat(file.Number(), &status) != 0 || status.st_nlink > 0) return success;
    // Another process took it for an abandoned file and has removed it.
    file.CloseQuietly();
    return EEXIST;
}

// Removes the temporary file if the process that made it has ended. The file is removed before its lock is released, so
// if its maker has created it but not locked it yet, CreateLocked finds that it is gone and makes another one.
void RemoveIfAbandoned(const std::string& path, pid_t maker) {
    Descriptor file;
    if (file.Open(path, O_RDONLY | O_NOFOLLOW)) return;
    const Error error = host::Try([&] { return ::flock(file.Number(), LOCK_EX | LOCK_NB); });
    // On a volume without locks, checks whether there is a process of that number.
    const bool isAbandoned = !error || (!(error == EWOULDBLOCK) && ::kill(maker, 0) != 0 && errno == ESRCH);
    if (isAbandoned) ::unlink(path.c_str());
}

void RemoveAbandonedFiles(const std::string& folder) {
    std::vector<FoundEntry> entries;
    std::ignore = FindFiles(folder + ".lw*.tmp", entries);
    for (const FoundEntry& entry : entries) {
        if (const auto maker = MakerOf(entry.name)) RemoveIfAbandoned(folder + entry.name, *maker);
    }
}

Error ExchangeNames(const std::string& a, const std::string& b) {
    return host::ExchangeNames(AT_FDCWD, a, b);
}

Error Rename(const std::string& from, const std::string& to) {
    return host::Try([&] { return std::rename(from.c_str(), to.c_str()); });
}

// Gives the file the permissions and the owner of the one at `path`, which must be a regular file (EINVAL).
Error CopyRights(const Descriptor& file, const std::string& path) {
    struct stat own {
    }, other{};
    if (::fstat(file.Number(), &own) != 0 || ::lstat(path.c_str(), &other) != 0) return errno;
    if (!S_ISREG(other.st_mode)) return EINVAL;
    const bool sameOwner = own.st_uid == other.st_uid && own.st_gid == other.st_gid;
    if (!sameOwner && ::fchown(file.Number(), other.st_uid, other.st_gid) != 0) return errno;
    return host::Try([&] { return ::fchmod(file.Number(), other.st_mode & 07777); });
}

}  // namespace

Error host::ExchangeNames(int folder, const std::string& a, const std::string& b) {
#ifdef RENAME_EXCHANGE
    return Try([&] { return ::renameat2(folder, a.c_str(), folder, b.c_str(), RENAME_EXCHANGE); });
#else
    return ENOSYS;
#endif
}

Error AtomicFile::Open(const std::string& path) {
    if (IsOpen()) return EBUSY;
    failure = Create(path);
    if (failure) temporary.clear();
    return failure;
}

Error AtomicFile::Create(const std::string& path) {
    const auto native = NativePath(path);
    if (!native) return ENOENT;
    target = *native;
    if (const Error error = CheckTarget(target)) return error;
    const std::string folder = target.substr(0, target.rfind('/') + 1);
    // Each folder is searched once per process, since it may contain many thousands of files.
    static std::set<std::string> seen;
    if (seen.insert(folder).second) RemoveAbandonedFiles(folder);
    Error error = EEXIST;
    for (int number = 1; error == EEXIST && number <= maxNumber; ++number) {
        temporary = folder + TemporaryLeaf(::getpid(), number);
        error = CreateLocked(temporary, file);
    }
    return error;
}

void AtomicFile::Write(std::span<const std::byte> data) {
    if (!failure) failure = file.Write(data);
}

void AtomicFile::Write(std::string_view text) {
    Write(std::as_bytes(std::span(text)));
}

void AtomicFile::Write(std::span<const std::string_view> parts) {
    if (!failure) failure = file.WriteAt(parts, 0);
}

template <class GiveName>
Error AtomicFile::Finish(GiveName giveName) {
    if (!IsOpen()) return failure ? failure : EBADF;
    // A full disk may be reported only by close. The second descriptor keeps the lock until the file is renamed.
    const int lock = ::fcntl(file.Number(), F_DUPFD_CLOEXEC, 0);
    if (const Error closed = file.Close(); !failure) failure = closed;
    if (!failure) failure = giveName();
    if (lock >= 0) ::close(lock);
    if (failure) Discard();
    temporary.clear();
    return failure;
}

Error AtomicFile::Commit() {
    return Finish([&] { return Rename(temporary, target); });
}

Error AtomicFile::CommitKeeping(const std::string& former) {
    const auto keptName = NativePath(former);
    if (!failure) failure = keptName ? CopyRights(file, target) : ENOENT;
    return Finish([&] {
        if (const Error error = ExchangeNames(temporary, target)) return error;
        const Error error = Rename(temporary, *keptName);
        if (!error) return success;
        // Undo the exchange. If that fails too, the new file keeps the name and the former one is removed.
        if (!ExchangeNames(temporary, target)) return error;
        ::unlink(temporary.c_str());
        return success;
    });
}

void AtomicFile::Discard() {
    if (!temporary.empty()) ::unlink(temporary.c_str());
    file.CloseQuietly();
    temporary.clear();
}

}  // namespace platform
