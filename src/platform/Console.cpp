// SPDX-License-Identifier: MIT
#include "platform/Console.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <optional>
#include <string>
#include <tuple>

#include "platform/Ascii.h"
#include "platform/Host.h"

namespace platform {

namespace {

constexpr std::size_t maxWarningSize = 8192;
constexpr std::array endingSignals = {SIGINT, SIGQUIT, SIGTERM, SIGHUP, SIGTSTP};  // end or stop the process
int output = STDOUT_FILENO;                                                        // what Print writes to

void WriteText(int fd, std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = host::Retry([&] { return ::write(fd, text.data(), text.size()); });
        if (count > 0) {
            text.remove_prefix(static_cast<std::size_t>(count));
        } else if (count < 0 && errno == EAGAIN) {
            // The parent process may have made the pipe non-blocking.
            pollfd ready{fd, POLLOUT, 0};
            if (host::Retry([&] { return ::poll(&ready, 1, -1); }) < 0) return;
        } else {
            return;
        }
    }
}

std::optional<char> ReadKey() {
    char key = 0;
    return host::Retry([&] { return ::read(STDIN_FILENO, &key, 1); }) == 1 ? std::optional(key) : std::nullopt;
}

std::string ReadLine() {
    std::string line;
    for (auto key = ReadKey(); key && *key != '\n'; key = ReadKey())
        line += *key;
    return line;
}

// True if a user can see a question and answer it.
bool HasUser() {
    return ::isatty(STDIN_FILENO) == 1 && ::isatty(STDERR_FILENO) == 1;
}

// Blocks signals that end or stop the process, so that the terminal can be restored before they take effect.
class BlockedSignals {
  public:
    BlockedSignals() {
        ::sigemptyset(&held);
        for (const int number : endingSignals)
            ::sigaddset(&held, number);
        ::sigprocmask(SIG_BLOCK, &held, &before);
    }
    ~BlockedSignals() { ::sigprocmask(SIG_SETMASK, &before, nullptr); }
    BlockedSignals(const BlockedSignals&) = delete;
    BlockedSignals& operator=(const BlockedSignals&) = delete;

    bool HasPending() const {
        sigset_t pending;
        if (::sigpending(&pending) != 0) return false;
        for (const int number : endingSignals)
            if (::sigismember(&pending, number) == 1 && ::sigismember(&before, number) == 0) return true;
        return false;
    }
    // Lets pending signals take effect now.
    void DeliverPending() const {
        ::sigprocmask(SIG_SETMASK, &before, nullptr);
        ::sigprocmask(SIG_BLOCK, &held, nullptr);
    }

  private:
    sigset_t held, before;
};

// Makes the terminal deliver each key at once and without echo.
void SetOneKeyMode(termios mode) {
    mode.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
    mode.c_cc[VMIN] = 1;
    mode.c_cc[VTIME] = 0;
    ::tcsetattr(STDIN_FILENO, TCSANOW, &mode);
}

// Waits a short time for a key. True also at the end of input, when none will ever come.
bool PollForKey() {
    constexpr int timeout = 50;  // ms
    pollfd ready{STDIN_FILENO, POLLIN, 0};
    return ::poll(&ready, 1, timeout) > 0;
}

}  // namespace

void Print(std::string_view text) {
    WriteText(output, text);
}

bool host::RedirectOutput() {
    const int copy = ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    if (copy < 0) return false;
    output = copy;
    KeepOutputRedirected();
    return true;
}

void host::KeepOutputRedirected() noexcept {
    if (output != STDOUT_FILENO) std::ignore = host::Try([] { return ::dup2(STDERR_FILENO, STDOUT_FILENO); });
}

void PrintError(std::string_view text) {
    WriteText(STDERR_FILENO, text);
}

void Warn(std::initializer_list<std::string_view> parts) {
    // Written in one piece, so that the lines of several processes do not mix, and without allocating memory, since a
    // lack of it may be the reason for the warning.
    std::array<char, maxWarningSize> line;
    std::size_t used = 0;
    const auto add = [&](std::string_view part) {
        for (const char c : part.substr(0, line.size() - 1 - used))
            line[used++] = c == '\n' || c == '\r' ? ' ' : c;
    };
    add("lanewright: warning: ");
    for (const std::string_view part : parts)
        add(part);
    line[used++] = '\n';
    PrintError({line.data(), used});
}

void ShowBox(std::string_view text) {
    PrintError(text);
    if (!text.ends_with('\n')) PrintError("\n");
    if (HasUser()) ReadLine();
}

bool AskYesNo(std::string_view text) {
    PrintError(text);
    PrintError(" [y/N] ");
    if (!HasUser()) {
        const char* answer = std::getenv("LANEWRIGHT_ANSWER");
        return answer != nullptr && std::string_view(answer) == "yes";
    }
    const std::string line = ReadLine();
    return EqualIgnoringCase(Trim(line), "y") || EqualIgnoringCase(Trim(line), "yes");
}

void WaitForKey() {
    termios before{};
    if (::tcgetattr(STDIN_FILENO, &before) != 0) {
        ReadKey();
        return;
    }
    BlockedSignals signals;
    bool hasKey = false;
    while (!hasKey) {
        SetOneKeyMode(before);
        while (!hasKey && !signals.HasPending())
            hasKey = PollForKey();
        if (hasKey) ReadKey();
        // Some keys send several bytes; TCSAFLUSH discards the rest.
        ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &before);
        signals.DeliverPending();
    }
}

}  // namespace platform
