#include "platform/Process.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

namespace platform {

namespace {

bool Ignore(int signalNumber) {
    return ::signal(signalNumber, SIG_IGN) != SIG_ERR;
}

}  // namespace

bool StartProcess() {
    // A descriptor that is opened takes the lowest free place, so the three get filled from below.
    int opened = 0;
    while (opened >= 0 && opened <= STDERR_FILENO)
        opened = ::open("/dev/null", O_RDWR);
    if (opened < 0) return false;
    ::close(opened);
    return Ignore(SIGPIPE) && Ignore(SIGXFSZ);
}

}  // namespace platform
