#include "platform/Console.h"

#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <cstdlib>
#include <optional>
#include <string>

#include "platform/Ascii.h"
#include "platform/Host.h"

namespace platform {

namespace {

void WriteText(int fd, std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = host::Retry([&] { return ::write(fd, text.data(), text.size()); });
        if (count > 0) {
            text.remove_prefix(static_cast<std::size_t>(count));
        } else if (count < 0 && errno == EAGAIN) {
            // Whoever started the program may have made its pipe non-blocking.
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

// Somebody sees what is asked and can answer.
bool HasUser() {
    return ::isatty(STDIN_FILENO) == 1 && ::isatty(STDERR_FILENO) == 1;
}

}  // namespace

void Print(std::string_view text) {
    WriteText(STDOUT_FILENO, text);
}

void PrintError(std::string_view text) {
    WriteText(STDERR_FILENO, text);
}

void Warn(std::string_view text) {
    PrintError("lanewright: warning: " + std::string(text) + '\n');
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
    const bool onTerminal = ::tcgetattr(STDIN_FILENO, &before) == 0;
    if (onTerminal) {
        termios oneKey = before;
        oneKey.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
        oneKey.c_cc[VMIN] = 1;
        oneKey.c_cc[VTIME] = 0;
        ::tcsetattr(STDIN_FILENO, TCSANOW, &oneKey);
    }
    ReadKey();
    // Some keys send several bytes; the rest goes with the first.
    if (onTerminal) ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &before);
}

}  // namespace platform
