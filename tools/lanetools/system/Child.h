// SPDX-License-Identifier: MIT
// Child processes: the program over a plate, and work that may crash or hang.
#pragma once

#include <chrono>
#include <functional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace lanetools {

// How a process ended: by a signal, or else with an exit code.
struct ChildEnd {
    int signal = 0;
    int exitCode = 0;
};

// "SIGSEGV"; "signal 63" for one without a name.
std::string SignalName(int signal);

// A process in a group of its own, so that Ctrl-C reaches it only through lanetools, and the processes that it has
// started end with it. Its standard input is empty, and lanetools reads both of its outputs. It ends at the latest with
// its CChild, and on Linux with lanetools.
class CChild {
  public:
    // Starts the program words[0] (a path) with the other words as its arguments, in the working folder of lanetools.
    // Throws std::system_error if no process or pipe can be created. A program that cannot be started ends with exit
    // code 127. `endVariable` is an environment variable that names a descriptor to the program: it is to write a line
    // there when it has come to its end.
    static CChild Program(const std::vector<std::string>& words, const std::string& endVariable);
    // Calls `work` in a copy of this process. Its result is the output; anything that it prints counts as errors. The
    // exit code is 0; it is exceptionCode, and the exception's text the output, if `work` threw.
    static CChild Apart(const std::function<std::string()>& work);

    static constexpr int exceptionCode = 125;

    CChild(CChild&& other) noexcept;
    CChild(const CChild&) = delete;
    CChild& operator=(const CChild&) = delete;
    ~CChild();

    int Number() const { return process; }
    bool IsEnded() const { return isEnded; }
    // Valid after it has ended.
    const ChildEnd& End() const { return end; }
    // True if it has come to its end by itself, as it has reported. Valid after it has ended.
    bool HasReportedEnd() const { return !ending.text.empty(); }
    // What it has written to standard output and standard error since the last call. Of what was written between two
    // calls the first 4 MiB are kept.
    std::string TakeOutput() { return std::exchange(output.text, {}); }
    std::string TakeErrors() { return std::exchange(errors.text, {}); }

    // Ask it to end (SIGTERM), or end it (SIGKILL), with all processes that it has started. It may take a moment until
    // IsEnded returns true.
    void Ask() const;
    void Kill() const;
    // Ends it and waits until it has ended.
    void KillAndWait() noexcept;

    // Waits until one of `children` has written something or ended, or lanetools has received a signal; no longer than
    // `limit`. Reads what the children have written.
    static void Wait(std::span<CChild* const> children, std::chrono::milliseconds limit);

  private:
    // The reading end of a pipe (-1 after it was closed), and what was read from it.
    struct Stream {
        int descriptor = -1;
        std::string text;
        void Read();
        void Close();
    };

    CChild(const std::function<int(int ending)>& body);
    void Signal(int signal) const;
    void Collect();

    int process = -1;
    bool isEnded = false;
    ChildEnd end;
    Stream output, errors, ending;
};

}  // namespace lanetools
