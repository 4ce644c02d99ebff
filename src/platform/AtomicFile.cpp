// SPDX-License-Identifier: MIT
#include "platform/AtomicFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <optional>
#include <set>
#include <string_view>
#include <tuple>
#include <vector>

#include "platform/Ascii.h"
#include "platform/Drives.h"
#include "platform/Files.h"
#include "platform/Host.h"

namespace platform {

namespace {

using host::Descriptor;

constexpr int maxNumber = 1000;

constexpr std::string_view leafStart = ".lw", leafEnd = ".tmp";

// A number that stays with the installation of the system; 0 if it has none. Derived from its id, which is not meant to
// be shown to others.
std::uint32_t InstallationNumber() {
    std::string id;
    constexpr std::size_t maxIdSize = 64;
    if (host::ReadFile("/etc/machine-id", id, maxIdSize)) return 0;
    std::uint32_t hash = 2166136261U;  // FNV-1a
    for (const char c : id)
        hash = (hash ^ static_cast<unsigned char>(c)) * 16777619U;
    return hash;
}

// A name for this machine that can be part of a file's name: its host name and, since some machines share a name such
// as "localhost", its installation number.
std::string MachineName() {
    utsname system{};
    std::string name = ::uname(&system) == 0 ? system.nodename : "";
    constexpr std::string_view safe = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789.-_";
    for (char& c : name)
        if (safe.find(UpperAscii(c)) == std::string_view::npos) c = '_';
    std::array<char, 16> number{};
    std::snprintf(number.data(), number.size(), ".%08x", static_cast<unsigned>(InstallationNumber()));
    return name + number.data();
}

const std::string& OwnMachine() {
    static const std::string name = MachineName();
    return name;
}

struct Maker {
    std::string machine;
    pid_t process;
};

// Removes the number after the last "-" of `text`, and that "-", and returns it; nothing if there is none.
std::optional<int> TakeLastNumber(std::string_view& text) {
    const std::size_t start = text.rfind('-') + 1;  // 0 if there is no "-"
    int number = 0;
    const auto [end, error] = std::from_chars(text.data() + start, text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number <= 0) return std::nullopt;
    text = text.substr(0, start == 0 ? 0 : start - 1);
    return number;
}

// Who made the temporary file of this name; nothing for any other name. The machine is empty in names of earlier
// versions, which did not have it.
std::optional<Maker> MakerOf(std::string_view leaf) {
    if (!leaf.starts_with(leafStart) || !leaf.ends_with(leafEnd)) return std::nullopt;
    leaf.remove_prefix(leafStart.size());
    leaf.remove_suffix(leafEnd.size());
    if (leaf.find('-') == std::string_view::npos || !TakeLastNumber(leaf)) return std::nullopt;
    const auto process = TakeLastNumber(leaf);
    return process ? std::optional(Maker{std::string(leaf), *process}) : std::nullopt;
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

bool IsADayOld(const struct stat& status) {
    constexpr std::time_t day = 86400;
    return std::time(nullptr) - status.st_mtime >= day;
}

// True if the open temporary file is without a lock and its maker has ended or must be assumed to have.
bool IsAbandoned(const Descriptor& file, const struct stat& status, const Maker& maker) {
    const Error error = host::Try([&] { return ::flock(file.Number(), LOCK_EX | LOCK_NB); });
    // EBADF: the file could only be opened for reading, and a network file system locks no such file.
    const bool mayBeLocked = error == EWOULDBLOCK || error == EBADF;
    if (maker.machine != OwnMachine()) return !mayBeLocked && IsADayOld(status);
    if (error == EWOULDBLOCK) return false;
    // The number may have been given to a new process, which may be this one; it knows that it did not make the file.
    const bool isOwnNumber = !error && maker.process == ::getpid();
    return isOwnNumber || (::kill(maker.process, 0) != 0 && errno == ESRCH);
}

// The file is removed before its lock is released, so if its maker has created it but not locked it yet, CreateLocked
// finds that it is gone and makes another one.
void RemoveIfAbandoned(const std::string& path, const Maker& maker) {
    Descriptor file;
    struct stat status {};
    // A file of another user may often only be read.
    if (file.Open(path, O_RDWR | O_NOFOLLOW, 0, &status) && file.Open(path, O_RDONLY | O_NOFOLLOW, 0, &status)) return;
    if (S_ISREG(status.st_mode) && IsAbandoned(file, status, maker)) ::unlink(path.c_str());
}

void RemoveAbandonedFiles(const std::string& folder) {
    std::vector<FoundEntry> entries;
    std::ignore = FindFiles(folder + ".lw*.tmp", entries);
    for (const FoundEntry& entry : entries) {
        if (const auto maker = MakerOf(entry.name)) RemoveIfAbandoned(folder + entry.name, *maker);
    }
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

std::string TemporaryBeginning(int process) {
    return std::string(leafStart) + OwnMachine() + '-' + std::to_string(process) + '-';
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
        temporary = folder + TemporaryBeginning(::getpid()) + std::to_string(number) + std::string(leafEnd);
        error = CreateLocked(temporary, file);
    }
    if (!error) known.Set(temporary.c_str());
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

Error AtomicFile::Commit() {
    return Finish(Rename);
}

Error AtomicFile::CommitNew() {
    return Finish(host::RenameNew);
}

Error AtomicFile::Finish(Error (*rename)(const std::string& from, const std::string& to)) {
    if (!IsOpen()) return failure ? failure : EBADF;
    // A full disk may be reported only by close. The second descriptor keeps the lock until the file is renamed.
    const int lock = ::fcntl(file.Number(), F_DUPFD_CLOEXEC, 0);
    if (const Error closed = file.Close(); !failure) failure = closed;
    if (!failure) failure = rename(temporary, target);
    if (lock >= 0) ::close(lock);
    if (failure) Discard();
    known.Set(nullptr);
    temporary.clear();
    return failure;
}

Error AtomicFile::CommitKeeping(const std::string& former, struct stat& status) {
    if (!IsOpen()) return failure ? failure : EBADF;
    const auto keptName = NativePath(former);
    if (!failure) failure = keptName ? CopyRights(file, target) : ENOENT;
    if (!failure) failure = file.Sync();  // reports what close would
    if (!failure && ::fstat(file.Number(), &status) != 0) failure = errno;
    if (!failure) failure = ExchangeNames(*keptName);
    if (failure) Discard();
    file.CloseQuietly();
    known.Set(nullptr);
    temporary.clear();
    return failure;
}

Error AtomicFile::ExchangeNames(const std::string& former) {
    if (const Error error = host::ExchangeNames(AT_FDCWD, temporary, target)) return error;
    const Error error = Rename(temporary, former);
    if (!error) return success;
    // Undo the exchange. If that fails too, the new file keeps the name and the former one is removed.
    if (!host::ExchangeNames(AT_FDCWD, temporary, target)) return error;
    ::unlink(temporary.c_str());
    return success;
}

void AtomicFile::Discard() {
    if (!temporary.empty()) ::unlink(temporary.c_str());
    file.CloseQuietly();
    known.Set(nullptr);
    temporary.clear();
}

}  // namespace platform
