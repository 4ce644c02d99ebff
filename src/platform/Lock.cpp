#include "platform/Lock.h"

#include <sys/file.h>

#include <algorithm>
#include <cerrno>

#include "platform/Clock.h"
#include "platform/Host.h"

namespace platform::host {

Error Lock(const Descriptor& file) {
    constexpr int patience = 5000, longestPause = 50;  // ms
    int waited = 0;
    // Turns are short, so the first tries follow soon upon each other.
    for (int pause = 1;; pause = std::min(2 * pause, longestPause)) {
        const Error error = Try([&] { return ::flock(file.Number(), LOCK_EX | LOCK_NB); });
        if (!(error == EWOULDBLOCK)) return success;
        if (waited >= patience) return EBUSY;
        Sleep(pause);
        waited += pause;
    }
}

}  // namespace platform::host
