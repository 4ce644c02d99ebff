// SPDX-License-Identifier: MIT
// Helpers for system calls. For the files of this folder only.
#pragma once

#include <cerrno>
#include <optional>
#include <string>

#include "platform/Error.h"

namespace platform::host {

// Repeats `call` as long as a signal interrupts it, and returns its result: -1, with errno set, on failure.
template <class Call>
auto Retry(Call call) {
    auto result = call();
    while (result == -1 && errno == EINTR)
        result = call();
    return result;
}

// The same for a call whose result only shows success or failure.
template <class Call>
Error Try(Call call) {
    return Retry(call) == -1 ? Error(errno) : success;
}

// The path to which a symbolic link at the host path `path` leads directly; nothing if there is no link.
std::optional<std::string> ReadLink(const std::string& path);

// Exchanges the names of two files in `folder`, a descriptor (AT_FDCWD for host paths), in one atomic step. EINVAL,
// ENOSYS or EOPNOTSUPP if the volume does not support that.
Error ExchangeNames(int folder, const std::string& a, const std::string& b);

// Renames a file in one atomic step if the volume can do that, and in any case without replacing anything: EEXIST if
// the name `to` is in use.
Error RenameNew(const std::string& from, const std::string& to);

}  // namespace platform::host
