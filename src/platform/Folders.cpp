// SPDX-License-Identifier: MIT
// Operations on paths: folders, files as a whole, volumes, the working folder and the program's own path.

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <limits>
#include <tuple>

#include "platform/Console.h"
#include "platform/Drives.h"
#include "platform/Files.h"
#include "platform/Guest.h"
#include "platform/Host.h"

namespace platform {

namespace {

// Calls `call`, which gives -1 and sets errno on failure, with the host's form of `path`.
template <class Call>
Error OnNativePath(const std::string& path, Call call) {
    const auto native = NativePath(path);
    return native ? host::Try([&] { return call(native->c_str()); }) : ENOENT;
}

Error Status(const std::string& path, struct stat& status) {
    return OnNativePath(path, [&](const char* name) { return ::stat(name, &status); });
}

// Of the link itself if `path` is a symbolic link.
Error NameStatus(const std::string& path, struct stat& status) {
    return OnNativePath(path, [&](const char* name) { return ::lstat(name, &status); });
}

}  // namespace

Error MakeDirectory(const std::string& path) {
    return OnNativePath(path, [](const char* name) { return ::mkdir(name, 0777); });
}

Error DeleteFile(const std::string& path) {
    return OnNativePath(path, [](const char* name) { return ::unlink(name); });
}

void DeleteIfThere(const std::string& path) {
    std::ignore = DeleteFile(path);
}

Error RenameFile(const std::string& from, const std::string& to) {
    const auto target = NativePath(to);
    if (!target) return ENOENT;
    return OnNativePath(from, [&](const char* name) { return std::rename(name, target->c_str()); });
}

Error SetNormalAttributes(const std::string& path) {
    struct stat status {};
    if (const Error error = Status(path, status)) return error;
    constexpr mode_t normal = S_IRUSR | S_IWUSR;
    if ((status.st_mode & normal) == normal) return success;
    return OnNativePath(path, [&](const char* name) { return ::chmod(name, (status.st_mode & 07777) | normal); });
}

std::optional<FileIdentity> IdentityOf(const std::string& path) {
    struct stat status {};
    if (Status(path, status)) return std::nullopt;
    return FileIdentity{status.st_dev, status.st_ino};
}

bool IsSameFile(const std::string& a, const std::string& b) {
    const auto first = IdentityOf(a);
    return first && first == IdentityOf(b);
}

std::optional<FileIdentity> IdentityOfName(const std::string& path) {
    struct stat status {};
    if (NameStatus(path, status)) return std::nullopt;
    return FileIdentity{status.st_dev, status.st_ino};
}

std::optional<std::string> host::ReadLink(const std::string& path) {
    std::string target(1024, '\0');
    while (true) {
        const ssize_t length = Retry([&] { return ::readlink(path.c_str(), target.data(), target.size()); });
        if (length < 0) return std::nullopt;
        if (static_cast<std::size_t>(length) < target.size()) {
            target.resize(static_cast<std::size_t>(length));
            return target.starts_with('/') ? target : path.substr(0, path.rfind('/') + 1) + target;
        }
        target.resize(target.size() * 2);
    }
}

std::vector<std::string> LinkPaths(const std::string& path) {
    constexpr std::size_t maxLinks = 40;
    std::vector<std::string> paths;
    for (auto next = NativePath(path); next; next = host::ReadLink(*next)) {
        if (paths.size() > maxLinks) return {};
        paths.push_back(*next);
    }
    if (paths.size() == 1) paths.clear();
    return paths;
}

Error Examine(const std::string& path) {
    struct stat status {};
    return Status(path, status);
}

bool IsOtherThanFolder(const std::string& path) {
    struct stat status {};
    return !Status(path, status) && !S_ISDIR(status.st_mode);
}

std::optional<std::uint64_t> FreeBytes(const std::string& path) {
    struct statvfs volume {};
    if (OnNativePath(path.empty() ? "." : path, [&](const char* name) { return ::statvfs(name, &volume); }))
        return std::nullopt;
    constexpr auto most = std::numeric_limits<std::uint64_t>::max();
    const std::uint64_t blocks = volume.f_bavail;
    const std::uint64_t blockSize = volume.f_frsize;
    if (blockSize != 0 && blocks > most / blockSize) return most;
    return blocks * blockSize;
}

Error SyncVolume(const std::string& path) {
    const auto native = NativePath(path);
    if (!native) return ENOENT;
    host::Descriptor folder;
    if (const Error error = folder.OpenFolder(*native, O_RDONLY)) return error;
    return host::Try([&] { return ::syncfs(folder.Number()); });
}

std::optional<std::string> CurrentFolder() {
    std::string folder(1024, '\0');
    while (::getcwd(folder.data(), folder.size()) == nullptr) {
        if (errno != ERANGE) return std::nullopt;
        folder.resize(folder.size() * 2);
    }
    folder.resize(folder.find('\0'));
    return folder;
}

Error SetCurrentFolder(const std::string& path) {
    if (const Error error = OnNativePath(path, [](const char* name) { return ::chdir(name); })) return error;
    host::KeepWorkingFolder();
    return success;
}

std::optional<std::string> ProgramPath() {
    std::string path(1024, '\0');
    while (true) {
        const ssize_t length = host::Retry([&] { return ::readlink("/proc/self/exe", path.data(), path.size()); });
        if (length <= 0) return std::nullopt;
        if (static_cast<std::size_t>(length) < path.size()) {
            path.resize(static_cast<std::size_t>(length));
            return path;
        }
        path.resize(path.size() * 2);
    }
}

std::optional<std::string> ProgramFolder() {
    const auto program = ProgramPath();
    if (!program) return std::nullopt;
    return program->substr(0, program->rfind('/') + 1);
}

std::string PathNextToProgram(const std::string& name) {
    const auto folder = ProgramFolder();
    if (folder) return *folder + name;
    Warn({"the program's folder is unknown, so ", name, " is looked for in the working folder"});
    return name;
}

}  // namespace platform
