// SPDX-License-Identifier: MIT
// The names of the temporary files that this process has at the moment, so that they can be removed wherever it ends.
#pragma once

#include <atomic>

namespace platform {

// Each file of the process that still has a temporary name owns one.
class NameToRemove {
  public:
    NameToRemove() noexcept;
    ~NameToRemove();
    NameToRemove(const NameToRemove&) = delete;
    NameToRemove& operator=(const NameToRemove&) = delete;

    // The name, in the host's form; it is not copied and stays valid until the next call. Null if there is none.
    void Set(const char* path) noexcept { name = path; }

    // Removes the files with all names that are set. For a process that is about to end without destructors: allocates
    // no memory, and may be called in a signal handler. Does nothing in a child process that was forked.
    static void RemoveAll() noexcept;

  private:
    std::atomic<const char*> name = nullptr;
    std::atomic<NameToRemove*> next = nullptr;
};

}  // namespace platform
