// SPDX-License-Identifier: MIT
#include "lanetools/system/LastResort.h"

#include <poll.h>
#include <sys/uio.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cstring>
#include <exception>
#include <new>
#include <tuple>

#include "lanetools/ExitCode.h"
#include "platform/NameToRemove.h"

namespace lanetools {

namespace {

constinit std::atomic<bool> wasShort = false;

[[noreturn]] void FailToAllocate() {
    wasShort = true;
    throw std::bad_alloc();
}

[[noreturn]] void EndByException() noexcept {
    constexpr int failed = static_cast<int>(ExitCode::Failed);
    const char* sentence = wasShort ? noMemory : "ended by an error in the program itself";
    try {
        if (std::current_exception()) throw;
    } catch (const std::bad_alloc&) {
        sentence = noMemory;
    } catch (const std::exception& error) {
        EndAtOnce(error.what(), failed);
    } catch (...) {
    }
    EndAtOnce(sentence, failed);
}

iovec Part(const char* text) {
    return {const_cast<char*>(text), std::strlen(text)};
}

}  // namespace

void PrepareLastResort() {
    std::set_new_handler(FailToAllocate);
    std::set_terminate(EndByException);
}

bool WasShortOfMemory() noexcept {
    return wasShort;
}

void EndAtOnce(const char* sentence, int exitCode) noexcept {
    platform::NameToRemove::RemoveAll();
    pollfd errors{STDERR_FILENO, POLLOUT, 0};
    const std::array parts{Part("lanetools: "), Part(sentence), Part("\n")};
    if (::poll(&errors, 1, 0) == 1) std::ignore = ::writev(STDERR_FILENO, parts.data(), parts.size());
    ::_exit(exitCode);
}

}  // namespace lanetools
