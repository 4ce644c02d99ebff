// SPDX-License-Identifier: MIT
#include "platform/NameToRemove.h"

#include <unistd.h>

namespace platform {

namespace {

// A list that a signal handler finds whole at any moment: one write adds or removes a name.
constinit std::atomic<NameToRemove*> first = nullptr;
constinit std::atomic<pid_t> owner = 0;

}  // namespace

NameToRemove::NameToRemove() noexcept : next(first.load()) {
    owner = ::getpid();
    first = this;
}

NameToRemove::~NameToRemove() {
    std::atomic<NameToRemove*>* link = &first;
    while (*link != this)
        link = &(*link).load()->next;
    *link = next.load();
}

void NameToRemove::RemoveAll() noexcept {
    if (owner != ::getpid()) return;
    for (const NameToRemove* one = first; one != nullptr; one = one->next)
        if (const char* const path = one->name) ::unlink(path);
}

}  // namespace platform
