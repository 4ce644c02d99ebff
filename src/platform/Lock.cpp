// SPDX-License-Identifier: MIT
#include "platform/Lock.h"

#include <sys/file.h>

#include <algorithm>
#include <cerrno>

#include "platform/Clock.h"
#include "platform/Host.h"

namespace platform::host {

Error Lock(const Descriptor& file) {
    int waited = 0;
    return Lock(file, waited);
}

Error Lock(const Descriptor& file, int& waited) {
    constexpr int maxPause = 50;  // ms
    // Locks are held for a short time only, so the first tries follow each other quickly.
    for (int pause = 1;; pause = std::min(2 * pause, maxPause)) {
        const Error error = Try([&] { return ::flock(file.Number(), LOCK_EX | LOCK_NB); });
        if (!(error == EWOULDBLOCK)) return success;
        if (waited >= lockTimeout) return EBUSY;
        Sleep(pause);
        waited += pause;
    }
}

}  // namespace platform::host
