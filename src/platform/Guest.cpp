// SPDX-License-Identifier: MIT
#include "platform/Guest.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cfenv>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <tuple>
#include <utility>

#include "platform/Console.h"
#include "platform/Host.h"

namespace platform {

namespace {

#ifdef O_PATH
constexpr int folderFlags = O_PATH | O_DIRECTORY | O_CLOEXEC;
#else
constexpr int folderFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
#endif

// The limits defined by POSIX. Others concern child processes and things that the program does not use.
constexpr auto limits =
    std::to_array({RLIMIT_AS, RLIMIT_CORE, RLIMIT_CPU, RLIMIT_DATA, RLIMIT_FSIZE, RLIMIT_NOFILE, RLIMIT_STACK});
constexpr std::array guardedSignals{SIGINT, SIGTERM, SIGPIPE};

// If the hard limit was lowered and this process may not raise it again, sets the soft limit as near as possible.
void RestoreLimit(decltype(RLIMIT_AS) resource, const rlimit& own) {
    rlimit now{};
    if (::getrlimit(resource, &now) != 0 || (now.rlim_cur == own.rlim_cur && now.rlim_max == own.rlim_max)) return;
    if (::setrlimit(resource, &own) == 0) return;
    const rlimit nearest{std::min(own.rlim_cur, now.rlim_max), now.rlim_max};
    ::setrlimit(resource, &nearest);
}

// The program's own state. It does not change after the start, so it is read only once, and restoring it takes one
// system call for each part.
class OwnState {
  public:
    OwnState() noexcept : mask(::umask(0)) {
        ::umask(mask);
        std::fegetenv(&floatingPoint);
        for (std::size_t i = 0; i < guardedSignals.size(); ++i)
            ::sigaction(guardedSignals[i], nullptr, &actions[i]);
        for (std::size_t i = 0; i < limits.size(); ++i)
            ::getrlimit(limits[i], &values[i]);
    }
    void Restore() const noexcept {
        std::fesetenv(&floatingPoint);
        ::umask(mask);
        for (std::size_t i = 0; i < guardedSignals.size(); ++i)
            ::sigaction(guardedSignals[i], &actions[i], nullptr);
        for (std::size_t i = 0; i < limits.size(); ++i)
            RestoreLimit(limits[i], values[i]);
    }

  private:
    mode_t mask;
    std::fenv_t floatingPoint{};
    std::array<struct sigaction, guardedSignals.size()> actions{};
    std::array<rlimit, limits.size()> values{};
};

const OwnState& Own() noexcept {
    static const OwnState state;
    return state;
}

int workingFolder = -1;  // a descriptor of the program's own working folder

// The names of the last call, for the warning. Plain arrays, because they are read while the process is ending.
struct Name {
    std::array<char, 256> text{};

    void operator=(std::string_view name) noexcept {
        const std::size_t length = std::min(name.size(), text.size() - 1);
        std::copy_n(name.begin(), length, text.begin());
        text[length] = '\0';
    }
};
Name lastLibrary, lastSample;

}  // namespace

void host::KeepWorkingFolder() noexcept {
    const int opened = host::Retry([] { return ::open(".", folderFlags); });
    if (const int former = std::exchange(workingFolder, opened); former >= 0) ::close(former);
}

void host::EndInsideGuest() {
    const std::string sample = lastSample.text.data();
    Warn(std::string("the library ") + lastLibrary.text.data() + " ended the process" +
         (sample.empty() ? "" : " during the base call of " + sample));
    std::fflush(nullptr);
    std::_Exit(EXIT_FAILURE);
}

GuestCall::GuestCall(std::string_view library, std::string_view sample) noexcept {
    std::ignore = Own();
    if (workingFolder < 0) host::KeepWorkingFolder();
    lastLibrary = library;
    lastSample = sample;
}

GuestCall::~GuestCall() {
    Own().Restore();
    if (workingFolder >= 0) std::ignore = host::Try([] { return ::fchdir(workingFolder); });
    host::KeepOutputRedirected();
}

}  // namespace platform
