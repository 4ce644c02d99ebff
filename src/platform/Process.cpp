// SPDX-License-Identifier: MIT
#include "platform/Process.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <charconv>
#include <cstdlib>
#include <string_view>
#include <tuple>

#include "platform/Console.h"
#include "platform/Guest.h"
#include "platform/Host.h"

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
int endDescriptor = -1;  // of the program that has started this one

// Neither a library's own processes nor a name in their environment may pass for the end of this process.
void KeepEndDescriptor() {
    const char* const text = std::getenv("LANEWRIGHT_END_DESCRIPTOR");
    if (text == nullptr) return;
    const std::string_view digits = text;
    int number = -1;
    std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (number > STDERR_FILENO && ::fcntl(number, F_SETFD, FD_CLOEXEC) == 0) endDescriptor = number;
    ::unsetenv("LANEWRIGHT_END_DESCRIPTOR");
}

void CheckEnd() {
    if (!isEnded) host::EndInsideGuest();
}

}  // namespace

bool StartProcess() {
    KeepFreedMemory();
    KeepEndDescriptor();
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
    constexpr std::string_view line = "end\n";
    if (endDescriptor >= 0) std::ignore = host::Retry([&] { return ::write(endDescriptor, line.data(), line.size()); });
}

}  // namespace platform
