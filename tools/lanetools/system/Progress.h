// SPDX-License-Identifier: MIT
// The progress of a long subcommand, on standard error.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>

namespace lanetools {

// On a terminal one line that updates itself; elsewhere (a log file, a pipe) a line every five seconds, and none at all
// if the work takes less time. Other messages on standard error go through Say, which keeps the line whole.
class CProgress {
  public:
    // `noun` is in the plural, such as "samples"; `count` is how many there are, 0 if that is unknown.
    CProgress(std::string noun, std::size_t count);
    ~CProgress();
    CProgress(const CProgress&) = delete;
    CProgress& operator=(const CProgress&) = delete;

    // Counts one more as done.
    void Step();
    // Writes a message as a line of its own.
    void Say(const std::string& message);

  private:
    void Show();
    void Clear();

    std::string what;
    std::size_t total, done = 0;
    bool isTerminal, isShown = false;
    std::chrono::steady_clock::time_point lastShown;
};

}  // namespace lanetools
