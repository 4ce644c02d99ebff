// SPDX-License-Identifier: MIT
// Renaming a file without replacing another one.
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "platform/Descriptor.h"
#include "platform/Host.h"

namespace platform {

namespace {

bool IsNotSupported(Error error) {
    return error == EINVAL || error == ENOSYS || error == EOPNOTSUPP;
}

Error RenameWithFlag(const std::string& from, const std::string& to) {
#ifdef RENAME_NOREPLACE
    return host::Try([&] { return ::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE); });
#else
    return ENOSYS;
#endif
}

// Makes a second name, which fails if it is in use, and removes the first one.
Error RenameByLink(const std::string& from, const std::string& to) {
    if (const Error error = host::Try([&] { return ::link(from.c_str(), to.c_str()); })) return error;
    ::unlink(from.c_str());
    return success;
}

// For volumes without links: takes the name with an empty file, and replaces that.
Error RenameByPlaceholder(const std::string& from, const std::string& to) {
    host::Descriptor placeholder;
    if (const Error error = placeholder.Create(to, 0666)) return error;
    const Error error = host::Try([&] { return std::rename(from.c_str(), to.c_str()); });
    if (error) ::unlink(to.c_str());
    return error;
}

}  // namespace

Error host::RenameNew(const std::string& from, const std::string& to) {
    Error error = RenameWithFlag(from, to);
    if (IsNotSupported(error)) error = RenameByLink(from, to);
    if (IsNotSupported(error) || error == EPERM) error = RenameByPlaceholder(from, to);
    return error;
}

}  // namespace platform
