// SPDX-License-Identifier: MIT
#include "lanetools/system/Interrupt.h"

#include <unistd.h>

#include <csignal>

#include "lanetools/ExitCode.h"
#include "lanetools/system/LastResort.h"

namespace lanetools {

namespace {

constexpr unsigned patience = 5;  // seconds

volatile std::sig_atomic_t wasInterrupted = 0;

extern "C" void Remember(int signal) {
    if (wasInterrupted != 0 || signal == SIGALRM) EndAtOnce("interrupted", static_cast<int>(ExitCode::Interrupted));
    wasInterrupted = 1;
    ::alarm(patience);
}

}  // namespace

void WatchInterrupt() {
    struct sigaction action = {};
    action.sa_handler = Remember;
    sigemptyset(&action.sa_mask);
    for (const int signal : {SIGINT, SIGTERM, SIGALRM})
        sigaction(signal, &action, nullptr);
}

bool IsInterrupted() noexcept {
    return wasInterrupted != 0;
}

void CheckInterrupt() {
    if (IsInterrupted()) throw CInterrupted();
}

}  // namespace lanetools
