// What a lack of memory may cost.
#pragma once

#include <new>

// Does `work`; false when there is not enough memory for it, and then nothing more is lost.
template <class Work>
bool WithinMemory(Work work) try {
    work();
    return true;
} catch (const std::bad_alloc&) {
    return false;
}
