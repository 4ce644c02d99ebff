// SPDX-License-Identifier: MIT
#include "lanetools/system/Progress.h"

#include <unistd.h>

#include <cstdio>
#include <utility>

namespace lanetools {

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using std::chrono::steady_clock;

}  // namespace

CProgress::CProgress(std::string noun, std::size_t count)
    : what(std::move(noun)), total(count), isTerminal(isatty(STDERR_FILENO) == 1), lastShown(steady_clock::now()) {}

CProgress::~CProgress() {
    Clear();
}

void CProgress::Step() {
    ++done;
    const auto now = steady_clock::now();
    if (now - lastShown < (isTerminal ? steady_clock::duration(milliseconds(100)) : seconds(5))) return;
    lastShown = now;
    Show();
}

void CProgress::Say(const std::string& message) {
    Clear();
    std::fprintf(stderr, "lanetools: %s\n", message.c_str());
}

void CProgress::Show() {
    std::string line = std::to_string(done);
    if (total > 0) line += " of " + std::to_string(total);
    line += " " + what;
    if (isTerminal)
        std::fprintf(stderr, "\r\033[K%s", line.c_str());
    else
        std::fprintf(stderr, "lanetools: %s\n", line.c_str());
    std::fflush(stderr);
    isShown = true;
}

void CProgress::Clear() {
    if (isTerminal && isShown) std::fprintf(stderr, "\r\033[K");
    isShown = false;
}

}  // namespace lanetools
