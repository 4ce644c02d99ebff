// Calls of the host, for the files of this folder only.
#pragma once

#include <cerrno>
#include <string>

#include "platform/Error.h"

namespace platform::host {

// Calls `call` again for as long as a signal interrupts it; its result, -1 for a failure that errno names.
template <class Call>
auto Retry(Call call) {
    auto result = call();
    while (result == -1 && errno == EINTR)
        result = call();
    return result;
}

// The same for a call whose result is of no interest.
template <class Call>
Error Try(Call call) {
    return Retry(call) == -1 ? Error(errno) : success;
}

// Gives each of two files in `folder` (AT_FDCWD for host paths) the name of the other, in one step. EINVAL, ENOSYS or
// EOPNOTSUPP where that cannot be done.
Error ExchangeNames(int folder, const std::string& a, const std::string& b);

}  // namespace platform::host
