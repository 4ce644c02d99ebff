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

// A process in a group of its own, so that Ctrl-C reaches it through lanetools alone, and what it has started ends with
// it. Standard input is empty, and both outputs come to lanetools. It does not outlive its CChild, and on Linux not
// lanetools either.
class CChild {
  public:
    // Starts the program words[0] (a path) with the other words as its arguments, in the working folder of lanetools.
    // Throws std::system_error when there is no process or pipe to be had. A program that cannot be started ends with
    // exit code 127.
    static CChild Program(const std::vector<std::string>& words);
    // Has `work` carried out in a copy of this process. Its result is the output; what else is printed counts as
    // errors. The exit code is 0, or 1 when `work` threw.
    static CChild Apart(const std::function<std::string()>& work);

    CChild(CChild&& other) noexcept;
    CChild(const CChild&) = delete;
    CChild& operator=(const CChild&) = delete;
    ~CChild();

    int Number() const { return process; }
    bool IsEnded() const { return isEnded; }
    // Once it has ended.
    const ChildEnd& End() const { return end; }
    // What has come on its standard output and standard error since they were last taken.
    std::string TakeOutput() { return std::exchange(output.text, {}); }
    std::string TakeErrors() { return std::exchange(errors.text, {}); }

    // Ask it to end (SIGTERM), or end it (SIGKILL), with all that it has started. It has ended once IsEnded says so.
    void Ask() const;
    void Kill() const;

    // Waits until one of `children` has written something or ended, or a signal has come to lanetools; no longer than
    // `limit`. Takes in what has come.
    static void Wait(std::span<CChild* const> children, std::chrono::milliseconds limit);

  private:
    // The reading end of a pipe, and what has come out of it. -1 once it is closed.
    struct Stream {
        int descriptor = -1;
        std::string text;
        void Read();
        void Close();
    };

    explicit CChild(const std::function<int()>& body);
    void Signal(int signal) const;
    void Collect();

    int process = -1;
    bool isEnded = false;
    ChildEnd end;
    Stream output, errors;
};

}  // namespace lanetools
