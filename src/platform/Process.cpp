// SPDX-License-Identifier: MIT
#include "platform/Process.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <cstdlib>

#include "platform/Console.h"
#include "platform/Guest.h"

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace platform {

namespace {

bool Ignore(int signalNumber) {
    return ::signal(signalNumber, SIG_IGN) != SIG_ERR;
}

// Keeps freed memory for the next sample. By default the allocator returns such large blocks to the system, which then
// has to clear every page again for each sample.
void KeepFreedMemory() {
#ifdef __GLIBC__
    constexpr int maxKeptBlock = 32 << 20;
    constexpr int maxKept = 128 << 20;
    ::mallopt(M_MMAP_THRESHOLD, maxKeptBlock);
    ::mallopt(M_TRIM_THRESHOLD, maxKept);
#endif
}

bool isEnded = false;

void CheckEnd() {
    if (!isEnded) host::EndInsideGuest();
}

}  // namespace

bool StartProcess() {
    KeepFreedMemory();
    // open gives the lowest free descriptor, so this fills any of the three that are closed.
    int opened = 0;
    while (opened >= 0 && opened <= STDERR_FILENO)
        opened = ::open("/dev/null", O_RDWR);
    if (opened < 0) return false;
    ::close(opened);
    return Ignore(SIGPIPE) && Ignore(SIGXFSZ) && host::RedirectOutput() && std::atexit(CheckEnd) == 0 &&
           std::at_quick_exit(CheckEnd) == 0;
}

void EndProcess() {
    isEnded = true;
}

}  // namespace platform
