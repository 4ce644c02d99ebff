// SPDX-License-Identifier: MIT
// Limits what a lack of memory costs to one piece of work.
#pragma once

#include <new>

// Runs `work`. False when it ran out of memory; the caller then skips that piece and continues.
template <class Work>
bool WithinMemory(Work work) try {
    work();
    return true;
} catch (const std::bad_alloc&) {
    return false;
}
