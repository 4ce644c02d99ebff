// SPDX-License-Identifier: MIT
#include "lanetools/system/Interrupt.h"

#include <csignal>

#include "lanetools/ExitCode.h"

namespace lanetools {

namespace {

volatile std::sig_atomic_t wasInterrupted = 0;

extern "C" void Remember(int signal) {
    if (wasInterrupted != 0) {
        std::signal(signal, SIG_DFL);
        std::raise(signal);
    }
    wasInterrupted = 1;
}

}  // namespace

void WatchInterrupt() {
    struct sigaction action = {};
    action.sa_handler = Remember;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
}

bool IsInterrupted() noexcept {
    return wasInterrupted != 0;
}

void CheckInterrupt() {
    if (IsInterrupted()) throw CInterrupted();
}

}  // namespace lanetools
