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
constexpr int folderToReturnTo = O_PATH | O_DIRECTORY | O_CLOEXEC;
#else
constexpr int folderToReturnTo = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
#endif

// Those that POSIX has. The others count for child processes and for what the program does not use.
constexpr auto limits =
    std::to_array({RLIMIT_AS, RLIMIT_CORE, RLIMIT_CPU, RLIMIT_DATA, RLIMIT_FSIZE, RLIMIT_NOFILE, RLIMIT_STACK});
constexpr std::array guardedSignals{SIGINT, SIGTERM, SIGPIPE};

// Where the hard limit was lowered and this process may not raise it again, the soft limit comes as near as it can.
void RestoreLimit(decltype(RLIMIT_AS) resource, const rlimit& own) {
    rlimit now{};
    if (::getrlimit(resource, &now) != 0 || (now.rlim_cur == own.rlim_cur && now.rlim_max == own.rlim_max)) return;
    if (::setrlimit(resource, &own) == 0) return;
    const rlimit nearest{std::min(own.rlim_cur, now.rlim_max), now.rlim_max};
    ::setrlimit(resource, &nearest);
}

// The state that the program runs in. It does not change after the start, so it is looked at once, and putting it back
// costs one call of the system for each part.
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

// The names of the last call, for the warning. Plain arrays, since they are read while the process ends.
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
    const int opened = host::Retry([] { return ::open(".", folderToReturnTo); });
    if (const int former = std::exchange(workingFolder, opened); former >= 0) ::close(former);
}

void host::EndInsideGuest() {
    const std::string sample = lastSample.text.data();
    Warn(std::string("the process was ended inside the library ") + lastLibrary.text.data() +
         (sample.empty() ? "" : " at " + sample));
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
    host::KeepOutputAside();
}

}  // namespace platform
