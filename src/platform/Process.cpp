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

// Memory that one sample gives back serves the next one. Left to itself, the allocator returns such large blocks to the
// system, which then clears every page anew for each sample.
void KeepFreedMemory() {
#ifdef __GLIBC__
    constexpr int largestKeptBlock = 32 << 20;
    constexpr int mostKept = 128 << 20;
    ::mallopt(M_MMAP_THRESHOLD, largestKeptBlock);
    ::mallopt(M_TRIM_THRESHOLD, mostKept);
#endif
}

bool isEnded = false;

void CheckEnd() {
    if (!isEnded) host::EndInsideGuest();
}

}  // namespace

bool StartProcess() {
    KeepFreedMemory();
    // A descriptor that is opened takes the lowest free place, so the three get filled from below.
    int opened = 0;
    while (opened >= 0 && opened <= STDERR_FILENO)
        opened = ::open("/dev/null", O_RDWR);
    if (opened < 0) return false;
    ::close(opened);
    return Ignore(SIGPIPE) && Ignore(SIGXFSZ) && host::SetOutputAside() && std::atexit(CheckEnd) == 0 &&
           std::at_quick_exit(CheckEnd) == 0;
}

void EndProcess() {
    isEnded = true;
}

}  // namespace platform
