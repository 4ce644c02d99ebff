// SPDX-License-Identifier: MIT
#include "lanetools/system/Child.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <new>
#include <string_view>
#include <system_error>
#include <utility>

#ifdef __linux__
#include <sys/prctl.h>
#endif

namespace lanetools {

namespace {

constexpr int cannotStart = 127;                        // as in a shell
constexpr std::size_t mostKept = std::size_t{4} << 20;  // of what a child writes

[[noreturn]] void Throw(const char* what) {
    throw std::system_error(errno, std::generic_category(), what);
}

struct Pipe {
    int reading, writing;
};

// Closed in every program that is started.
Pipe MakePipe() {
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0) Throw("A pipe for a child process cannot be created");
    for (const int end : ends)
        ::fcntl(end, F_SETFD, FD_CLOEXEC);
    ::fcntl(ends[0], F_SETFL, O_NONBLOCK);
    return {ends[0], ends[1]};
}

// In the child: sets what it reads and writes, and makes it end with lanetools.
void SettleChild(int output, int errors, pid_t parent) {
    ::setpgid(0, 0);
#ifdef __linux__
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != parent) ::_exit(cannotStart);
#else
    (void)parent;
#endif
    for (const int signal : {SIGINT, SIGTERM, SIGPIPE, SIGALRM})
        std::signal(signal, SIG_DFL);
    const int nothing = ::open("/dev/null", O_RDONLY);
    ::dup2(nothing, STDIN_FILENO);
    ::dup2(output, STDOUT_FILENO);
    ::dup2(errors, STDERR_FILENO);
}

bool WriteAll(int descriptor, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = ::write(descriptor, text.data(), text.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        text.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

int GiveResult(const std::function<std::string()>& work) {
    // Descriptor 1 is where the work may print.
    const int answer = ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0);
    ::dup2(STDERR_FILENO, STDOUT_FILENO);
    // What ends the work by an exception that nobody handles is the work's crash, and no affair of lanetools.
    std::set_terminate(std::abort);
    std::set_new_handler(nullptr);
    try {
        return WriteAll(answer, work()) ? 0 : 1;
    } catch (const std::bad_alloc&) {
        WriteAll(answer, "there is not enough memory");
    } catch (const std::exception& error) {
        WriteAll(answer, error.what());
    } catch (...) {
        WriteAll(answer, "an unknown error");
    }
    return CChild::exceptionCode;
}

// The environment of a child, in which `variable` gets a value that is known only in the child.
class CEnvironment {
  public:
    explicit CEnvironment(const std::string& variable) : name(variable) {
        for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry)
            if (!std::string_view(*entry).starts_with(name + '=')) entries.push_back(*entry);
        entries.push_back(added.data());
        entries.push_back(nullptr);
    }
    CEnvironment(const CEnvironment&) = delete;
    CEnvironment& operator=(const CEnvironment&) = delete;

    // Allocates no memory. The result is valid as long as this object.
    char* const* With(int value) {
        std::snprintf(added.data(), added.size(), "%s=%d", name.c_str(), value);
        return entries.data();
    }

  private:
    std::string name;
    std::array<char, 100> added{};
    std::vector<char*> entries;
};

}  // namespace

std::string SignalName(int signal) {
#ifdef __GLIBC__
    if (const char* const name = ::sigabbrev_np(signal)) return std::string("SIG") + name;
#endif
    return "signal " + std::to_string(signal);
}

CChild CChild::Program(const std::vector<std::string>& words, const std::string& endVariable) {
    std::vector<char*> arguments;
    for (const std::string& word : words)
        arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    CEnvironment environment(endVariable);
    return CChild([&](int number) {
        ::fcntl(number, F_SETFD, 0);  // stays open in the program
        ::execve(arguments[0], arguments.data(), environment.With(number));
        return cannotStart;
    });
}

CChild CChild::Apart(const std::function<std::string()>& work) {
    return CChild([&](int) { return GiveResult(work); });
}

CChild::CChild(const std::function<int(int)>& body) {
    std::fflush(nullptr);  // or the child would write it as well
    const Pipe out = MakePipe(), err = MakePipe(), ends = MakePipe();
    const pid_t parent = ::getpid();
    process = ::fork();
    if (process < 0) Throw("A child process cannot be started");
    if (process == 0) {
        SettleChild(out.writing, err.writing, parent);
        ::_exit(body(ends.writing));
    }
    ::setpgid(process, process);  // both processes do it, since either may be the first
    for (const Pipe& pipe : {out, err, ends})
        ::close(pipe.writing);
    output.descriptor = out.reading;
    errors.descriptor = err.reading;
    ending.descriptor = ends.reading;
}

CChild::CChild(CChild&& other) noexcept
    : process(std::exchange(other.process, -1)),
      isEnded(other.isEnded),
      end(other.end),
      output(std::exchange(other.output, {})),
      errors(std::exchange(other.errors, {})),
      ending(std::exchange(other.ending, {})) {}

void CChild::KillAndWait() noexcept {
    if (process <= 0 || isEnded) return;
    Kill();
    while (::waitpid(process, nullptr, 0) < 0 && errno == EINTR) {
    }
    isEnded = true;
    end = {SIGKILL, 0};
}

CChild::~CChild() {
    KillAndWait();
    for (Stream* stream : {&output, &errors, &ending})
        stream->Close();
}

void CChild::Signal(int signal) const {
    if (process <= 0 || isEnded) return;
    if (::kill(-process, signal) != 0) ::kill(process, signal);
}

void CChild::Ask() const {
    Signal(SIGTERM);
}

void CChild::Kill() const {
    Signal(SIGKILL);
}

void CChild::Stream::Close() {
    if (descriptor >= 0) ::close(std::exchange(descriptor, -1));
}

void CChild::Stream::Read() {
    std::array<char, 1 << 14> buffer;
    // More than a pipe holds. A child that never stops writing must not keep the others waiting.
    for (int i = 0; i < 64 && descriptor >= 0; ++i) {
        const ssize_t got = ::read(descriptor, buffer.data(), buffer.size());
        if (got < 0 && errno == EINTR) continue;
        if (got < 0 && errno == EAGAIN) return;
        if (got <= 0) return Close();
        text.append(buffer.data(), std::min(static_cast<std::size_t>(got), mostKept - text.size()));
    }
}

// First finds out if it has ended: all that it has written can then be read.
void CChild::Collect() {
    int status = 0;
    const bool hasEnded = !isEnded && ::waitpid(process, &status, WNOHANG) == process;
    for (Stream* stream : {&output, &errors, &ending})
        stream->Read();
    if (!hasEnded) return;
    isEnded = true;
    end = WIFSIGNALED(status) ? ChildEnd{WTERMSIG(status), 0} : ChildEnd{0, WEXITSTATUS(status)};
    for (Stream* stream : {&output, &errors, &ending})
        stream->Close();
}

void CChild::Wait(std::span<CChild* const> children, std::chrono::milliseconds limit) {
    // A pipe is closed just before its process ends, and nothing else announces that end.
    constexpr std::chrono::milliseconds soon{2}, longest{100};
    bool isEndNear = false;
    std::vector<pollfd> watched;
    for (const CChild* child : children) {
        isEndNear = isEndNear || (!child->isEnded && child->output.descriptor < 0 && child->errors.descriptor < 0);
        for (const Stream* stream : {&child->output, &child->errors})
            if (stream->descriptor >= 0) watched.push_back({stream->descriptor, POLLIN, 0});
    }
    const auto pause = std::min(limit, isEndNear ? soon : longest);
    ::poll(watched.data(), watched.size(), static_cast<int>(pause.count()));
    for (CChild* child : children)
        child->Collect();
}

}  // namespace lanetools
